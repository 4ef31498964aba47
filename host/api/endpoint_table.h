#ifndef MIRN_HOST_API_ENDPOINT_TABLE_H
#define MIRN_HOST_API_ENDPOINT_TABLE_H

#include <map>
#include <string>
#include <vector>

#include "api/endpoint.h"
#include "api/path_template.h"

namespace host {

/// Everything that the service can be asked, by path and method. Filled at the start, then constant and safe
/// from any thread.
class EndpointTable {
 public:
  /// What stands under one path.
  struct Resource {
    PathTemplate path;
    std::map<std::string, ApiEndpoint> endpoints;  ///< By method.

    /// The one for the method; HEAD is a GET. Null when there is none.
    const ApiEndpoint* find(const std::string& method) const;

    /// The methods as the Allow field lists them.
    std::string allowed() const;
  };

  /// Raises `std::runtime_error` when there is one with this method and path already.
  void add(ApiEndpoint endpoint);

  /// The resource whose path fits best; null when none does.
  const Resource* find(const std::vector<std::wstring>& segments) const;

  /// In the order of their paths.
  const std::vector<Resource>& resources() const { return m_resources; }

 private:
  std::vector<Resource> m_resources;  ///< In the order of their paths.
};

}  // namespace host

#endif
