#include "api/own_endpoints.h"

#include <algorithm>
#include <utility>

#include "answers/json_reader.h"
#include "answers/json_writer.h"
#include "api/api_path.h"
#include "http_method.h"
#include "text.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr wchar_t kSimulator[] = L"simulator";
constexpr wchar_t kDisksPath[] = L"mirn/enddevices";

ServiceObject versionObject(const PluginVersion& version) {
  ServiceObject object;
  object.member(L"major") = ServiceObject(version.major);
  object.member(L"minor") = ServiceObject(version.minor);
  object.member(L"patch") = ServiceObject(version.patch);
  object.member(L"build") = ServiceObject(version.build);
  return object;
}

ServiceObject libraryObject(const LibraryDescription& library) {
  ServiceObject object;
  object.member(L"name") = utf8ToWide(library.name);
  object.member(L"path") = utf8ToWide(library.path);
  object.member(L"simulated") = library.isSimulated;
  return object;
}

ServiceObject serviceObject(const ovra::plugin_interface& plugin, const std::vector<std::wstring>& keys,
                            const std::optional<LibraryDescription>& library) {
  ServiceObject description;
  description.member(L"name") = plugin.getName();
  description.member(L"shortName") = plugin.getShortName();
  description.member(L"code") = plugin.getCode();
  description.member(L"apiVersion") = plugin.getApiVersion();
  description.member(L"version") = versionObject(plugin.getVersion());
  ServiceObject& paths = description.member(L"paths");
  paths = ServiceObject::array();
  std::size_t count = 0;
  for (const std::wstring& key : keys) paths.at(count++) = key;
  if (library) description.member(L"library") = libraryObject(*library);
  return description;
}

/// What is read without waiting for anybody.
ApiEndpoint ownRead(std::string operation, std::wstring path, std::optional<Role> role) {
  ApiEndpoint endpoint;
  endpoint.operation = std::move(operation);
  endpoint.method = "GET";
  endpoint.path = std::move(path);
  endpoint.role = role;
  return endpoint;
}

Answer verdictAnswer(const std::optional<std::string>& objection, const char* good) {
  if (objection) throw Refusal(503, *objection);
  return jsonAnswer(good);
}

/// Lists what the plug-in publishes of its disks; null when it is one that publishes none.
DiskNames::Lister diskLister(ovra::service_plugin_interface& plugin, const std::vector<std::wstring>& keys) {
  if (std::find(keys.begin(), keys.end(), kDisksPath) == keys.end()) return [] { return ServiceObject(); };
  return [&plugin] { return plugin.handleRequest(kDisksPath, HttpMethod::kGet, {}, {}, {}); };
}

/// The controls, and what they need to know of the machine.
struct ControlDesk {
  ControlDesk(SimulatorControls given, DiskNames::Lister lister)
      : controls(std::move(given)), disks(std::move(lister)) {}

  const SimulatorControls controls;
  DiskNames disks;  ///< has its own lock
};

ApiEndpoint controlEndpoint(const std::wstring& name, const std::wstring& path,
                            const std::shared_ptr<ControlDesk>& desk, std::size_t maxBodyDepth) {
  ApiEndpoint endpoint;
  endpoint.operation = "simulator " + wideToUtf8(name);
  endpoint.method = "POST";
  endpoint.path = path + L'/' + name;
  endpoint.role = Role::kAdminister;
  endpoint.lane = Lane::kChanges;
  endpoint.isChange = true;
  endpoint.references = {L"disk"};
  endpoint.handle = [desk, name, maxBodyDepth](const Call&, const std::string& body) {
    return valueAnswer(desk->controls.run(name, readJson(body, maxBodyDepth), &desk->disks));
  };
  return endpoint;
}

}  // namespace

void addHealthEndpoints(EndpointTable& table, const HealthMonitor& monitor) {
  ApiEndpoint health = ownRead("getProcessHealth", L"healthz", {});
  health.handle = [&monitor](const Call&, const std::string&) {
    return verdictAnswer(monitor.whyNotWorking(), R"({"status":"working"})");
  };
  table.add(std::move(health));
  ApiEndpoint readiness = ownRead("getReadiness", L"readyz", {});
  readiness.handle = [&monitor](const Call&, const std::string&) {
    return verdictAnswer(monitor.whyNotReady(), R"({"status":"ready"})");
  };
  table.add(std::move(readiness));
}

void addServiceEndpoint(EndpointTable& table, const ovra::plugin_interface& plugin,
                        const std::vector<std::wstring>& keys,
                        const std::optional<LibraryDescription>& library) {
  ApiEndpoint endpoint = ownRead("getService", apiPath(plugin), Role::kObserve);
  endpoint.handle = [json = writeJson(serviceObject(plugin, keys, library))](
                        const Call&, const std::string&) { return jsonAnswer(json); };
  table.add(std::move(endpoint));
}

void addControlEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin,
                         const std::vector<std::wstring>& keys, SimulatorControls controls,
                         std::size_t maxBodyDepth) {
  if (controls.isEmpty()) return;
  const std::wstring path = apiPath(plugin, kSimulator);
  const auto desk = std::make_shared<ControlDesk>(std::move(controls), diskLister(plugin, keys));
  ApiEndpoint list = ownRead("listSimulatorControls", path, Role::kAdminister);
  list.handle = [desk](const Call&, const std::string&) { return valueAnswer(desk->controls.describe()); };
  table.add(std::move(list));
  for (const std::wstring& name : desk->controls.names()) {
    table.add(controlEndpoint(name, path, desk, maxBodyDepth));
  }
}

}  // namespace host
