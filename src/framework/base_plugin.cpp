#include "base_plugin.h"

#include "plugin_identity.h"
#include "text.h"

namespace ovra {

BasePlugin::BasePlugin()
    : m_name(kPluginName),
      m_shortName(kPluginShortName),
      m_code(kPluginCode),
      m_apiVersion(kPluginApiVersion),
      m_version(kPluginVersion) {}

const std::wstring& BasePlugin::getShortName() const { return m_shortName; }
const std::wstring& BasePlugin::getName() const { return m_name; }
const PluginVersion& BasePlugin::getVersion() const { return m_version; }
const std::wstring& BasePlugin::getCode() const { return m_code; }
const std::wstring& BasePlugin::getApiVersion() const { return m_apiVersion; }

std::vector<std::wstring> BasePlugin::getHandledPaths() { return m_paths; }

data_transfer::ServiceObject BasePlugin::handleRequest(std::wstring path, std::int32_t method,
                                                       std::vector<std::wstring> segments,
                                                       std::map<std::wstring, std::wstring> parameters,
                                                       data_transfer::ServiceObject body) {
  if (!segments.empty()) path += L"/" + joined(segments, L"/");
  return routeRequest(m_routes, method, path, parameters, body);
}

}  // namespace ovra
