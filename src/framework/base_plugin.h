#ifndef MIRN_FRAMEWORK_BASE_PLUGIN_H
#define MIRN_FRAMEWORK_BASE_PLUGIN_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "plugin_interface.h"
#include "route_table.h"

namespace ovra {

/// What every service plug-in has in common: its identity, and requests answered from one table of routes.
///
/// Constant after construction: a derived class fills `m_routes` and `m_paths` in its constructor, or
/// overrides the two operations that read them. A class that gets concurrent requests must not depend on
/// `m_routes`, see `routeRequest`.
class BasePlugin : public service_plugin_interface {
 public:
  const std::wstring& getShortName() const override;
  const std::wstring& getName() const override;
  const PluginVersion& getVersion() const override;
  const std::wstring& getCode() const override;
  const std::wstring& getApiVersion() const override;

  std::vector<std::wstring> getHandledPaths() override;

  /// Patterns match the path key and the segments as one text, joined with "/".
  data_transfer::ServiceObject handleRequest(std::wstring path, std::int32_t method,
                                             std::vector<std::wstring> segments,
                                             std::map<std::wstring, std::wstring> parameters,
                                             data_transfer::ServiceObject body) override;

 protected:
  BasePlugin();

  RouteTable m_routes;
  std::vector<std::wstring> m_paths;

 private:
  const std::wstring m_name;
  const std::wstring m_shortName;
  const std::wstring m_code;
  const std::wstring m_apiVersion;
  const PluginVersion m_version;
};

}  // namespace ovra

#endif
