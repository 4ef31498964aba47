#ifndef MIRN_HOST_BUNDLE_BUNDLED_READS_H
#define MIRN_HOST_BUNDLE_BUNDLED_READS_H

#include <string>
#include <vector>

#include "api/endpoint_table.h"
#include "bundle/bundled_objects.h"

namespace host {

/// One request whose answer belongs into a bundle. Plain value.
struct BundledRead {
  const ApiEndpoint* endpoint;
  RequestTarget target;
  std::string file;   ///< Path of the answer in the archive, without its ending.
  unsigned page = 0;  ///< Its number, from 1 on; 0 where there are no pages.
};

/// An operation that is not in the bundle, or not for all objects.
struct LeftOut {
  std::string operation;
  std::string reason;
};

/// All reads of a host, and which of them a bundle asks for. Filled once; constant from then on.
class BundledOperations {
 public:
  /// Takes over every GET; the table is complete.
  void learn(const EndpointTable& table);

  /// The reads of the plug-in, or the host's own ones; what is not asked for is added to `leftOut`.
  std::vector<BundledRead> readsOfPlugin(const BundledObjects& objects, std::vector<LeftOut>& leftOut) const;
  std::vector<BundledRead> readsOfHost(const BundledObjects& objects, std::vector<LeftOut>& leftOut) const;

 private:
  std::vector<ApiEndpoint> m_endpoints;  ///< In the order of their paths.
};

/// The page behind `read`.
BundledRead nextPage(const BundledRead& read, const std::string& cursor);

/// The target as a request has it: "/api/v1/jobs?state=ended".
std::string targetText(const RequestTarget& target);

}  // namespace host

#endif
