#ifndef MIRN_PLUGIN_REHEARSAL_H
#define MIRN_PLUGIN_REHEARSAL_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "mirn_session.h"
#include "ServiceObject.h"

/// A request of the plug-in, as a value; see `service_plugin_interface::handleRequest`.
struct PluginRequest {
  std::wstring path;
  std::int32_t method;
  std::vector<std::wstring> segments;
  std::map<std::wstring, std::wstring> parameters;
  ovra::data_transfer::ServiceObject body;
};

/// Plays requests through the listeners over one picture of a session, without a lock and without a deed.
class Rehearsal {
 public:
  /// Takes the picture over; raises as a read does.
  explicit Rehearsal(MirnSession& session);

  /// See `rehearsed_plugin_1::rehearse`.
  ovra::data_transfer::ServiceObject plan(const PluginRequest& request) const;

  /// See `rehearsed_plugin_1::rehearseEach`. An argument in braces that the request's path has no place for
  /// is refused as a whole, under "INVALID_PARAMETER".
  ovra::data_transfer::ServiceObject planEach(
      PluginRequest request, const std::wstring& argument,
      const std::vector<ovra::data_transfer::ServiceObject>& values) const;

 private:
  ovra::data_transfer::ServiceObject planOrRefusal(const PluginRequest& request) const;

  const Picture m_picture;
  const std::int64_t m_locateTimeout;
};

#endif
