#include "api/own_endpoints.h"

#include <algorithm>
#include <utility>

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

constexpr char kVerdictSchema[] = R"({
  "type": "object",
  "properties": {"status": {"type": "string", "enum": ["working", "ready"]}},
  "required": ["status"],
  "additionalProperties": false
})";

constexpr char kServiceSchema[] = R"({
  "type": "object",
  "properties": {
    "name": {"type": "string", "description": "The plug-in's name."},
    "shortName": {"type": "string"},
    "code": {"type": "string", "description": "The first segment of its paths."},
    "apiVersion": {"type": "string"},
    "version": {
      "type": "object",
      "properties": {
        "major": {"type": "integer", "minimum": 0},
        "minor": {"type": "integer", "minimum": 0},
        "patch": {"type": "integer", "minimum": 0},
        "build": {"type": "integer", "minimum": 0}
      },
      "required": ["major", "minor", "patch", "build"]
    },
    "paths": {"type": "array", "items": {"type": "string"}, "description": "What it handles, and all below."},
    "library": {
      "type": "object",
      "description": "The library that the plug-in stands on, where that is known.",
      "properties": {
        "name": {"type": "string"},
        "path": {"type": "string"},
        "simulated": {"type": "boolean", "description": "It models a machine."}
      },
      "required": ["name", "path", "simulated"]
    }
  },
  "required": ["name", "shortName", "code", "apiVersion", "version", "paths"],
  "additionalProperties": false
})";

constexpr char kControlsSchema[] = R"({
  "type": "array",
  "items": {
    "type": "object",
    "properties": {
      "name": {"type": "string"},
      "arguments": {"type": "array", "items": {"type": "string"}}
    },
    "required": ["name", "arguments"]
  }
})";

/// What is read at once, without waiting for anybody.
ApiEndpoint ownRead(std::string operation, std::wstring path, std::optional<Role> role) {
  ApiEndpoint endpoint;
  endpoint.operation = std::move(operation);
  endpoint.method = "GET";
  endpoint.path = std::move(path);
  endpoint.role = role;
  endpoint.lane = Lane::kAtOnce;
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

/// "simulatorFailDisk" of "fail-disk".
std::string controlOperation(const std::string& name) {
  std::string operation = "simulator";
  bool startsWord = true;
  for (const char character : name) {
    if (character == '-') {
      startsWord = true;
    } else {
      operation += startsWord ? static_cast<char>(character - 'a' + 'A') : character;
      startsWord = false;
    }
  }
  return operation;
}

EndpointDocument controlDocument(const SimulatorControls& controls, const std::wstring& name) {
  const ControlDescription told = controls.describe(name);
  EndpointDocument document{"simulator", wideToUtf8(name), told.summary, "For tests and trials alone."};
  if (told.answer.empty()) {
    document.answers = {{204, "It is done."}};
  } else {
    document.answers = {{200, "What it tells.", told.answer}};
  }
  if (told.mayTellNothing) {
    document.answers.push_back({204, "There is nothing to tell."});
  }
  for (const unsigned status : {404U, 409U}) document.answers.push_back({status, {}});
  document.effect = "changes";
  document.body = told.body;
  document.needsBody = told.needsBody;
  return document;
}

ApiEndpoint controlEndpoint(const std::wstring& name, const std::wstring& path,
                            const std::shared_ptr<ControlDesk>& desk, const JsonBounds& bodies) {
  ApiEndpoint endpoint;
  endpoint.operation = controlOperation(wideToUtf8(name));
  endpoint.method = "POST";
  endpoint.path = path + L'/' + name;
  endpoint.role = Role::kAdminister;
  endpoint.lane = Lane::kChanges;
  endpoint.isChange = true;
  endpoint.references = {L"disk"};
  endpoint.document = controlDocument(desk->controls, name);
  endpoint.handle = [desk, name, bodies](const Call&, const std::string& body) {
    return valueAnswer(desk->controls.run(name, readJson(body, bodies), &desk->disks));
  };
  return endpoint;
}

}  // namespace

void addHealthEndpoints(EndpointTable& table, const HealthMonitor& monitor) {
  ApiEndpoint health = ownRead("getProcessHealth", L"healthz", {});
  health.document = {{"host",
                      "health",
                      "Tells whether the host and the plug-in work.",
                      "A 503 says why not.",
                      {{200, "They work.", kVerdictSchema}}}};
  health.handle = [&monitor](const Call&, const std::string&) {
    return verdictAnswer(monitor.whyNotWorking(), R"({"status":"working"})");
  };
  table.add(std::move(health));
  ApiEndpoint readiness = ownRead("getReadiness", L"readyz", {});
  readiness.document = {{"host",
                         "readiness",
                         "Tells whether requests are served now.",
                         "A 503 says why not.",
                         {{200, "They are.", kVerdictSchema}}}};
  readiness.handle = [&monitor](const Call&, const std::string&) {
    return verdictAnswer(monitor.whyNotReady(), R"({"status":"ready"})");
  };
  table.add(std::move(readiness));
}

void addServiceEndpoint(EndpointTable& table, const ovra::plugin_interface& plugin,
                        const std::vector<std::wstring>& keys,
                        const std::optional<LibraryDescription>& library) {
  ApiEndpoint endpoint = ownRead("getService", apiPath(plugin), Role::kObserve);
  endpoint.document = {{"host",
                        "show",
                        "Tells what is served: the plug-in, its paths and its library.",
                        "It stays the same for as long as the host runs.",
                        {{200, "What is served.", kServiceSchema}}}};
  endpoint.handle = [json = writeJson(serviceObject(plugin, keys, library))](
                        const Call&, const std::string&) { return jsonAnswer(json); };
  table.add(std::move(endpoint));
}

void addControlEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin,
                         const std::vector<std::wstring>& keys, SimulatorControls controls,
                         const JsonBounds& bodies) {
  if (controls.isEmpty()) return;
  const std::wstring path = apiPath(plugin, kSimulator);
  const auto desk = std::make_shared<ControlDesk>(std::move(controls), diskLister(plugin, keys));
  ApiEndpoint list = ownRead("listSimulatorControls", path, Role::kAdminister);
  list.lane = Lane::kOwn;
  list.document = {
      {"simulator",
       "list",
       "Lists the controls of the simulated machine.",
       "They are there with --simulator-controls, and with a library that has them.",
       {{200, "The controls, each with the names of its arguments.", kControlsSchema}, {404, {}}}}};
  list.handle = [desk](const Call&, const std::string&) { return valueAnswer(desk->controls.describe()); };
  table.add(std::move(list));
  for (const std::wstring& name : desk->controls.names()) {
    table.add(controlEndpoint(name, path, desk, bodies));
  }
}

}  // namespace host
