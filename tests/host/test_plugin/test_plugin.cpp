#include "host/test_plugin/test_plugin.h"

#include <exception>

#include "host/test_plugin/trace.h"

using ovra::data_transfer::ServiceObject;

const wchar_t* const kTestPluginName = L"Test plug-in";

namespace {

/// A failure whose code is in this module alone.
class OwnFailure : public std::exception {
 public:
  explicit OwnFailure(const char* reason) : m_reason(reason) {}

  const char* what() const noexcept override { return m_reason.c_str(); }

 private:
  std::string m_reason;
};

/// As the setting `name` says: "throw" with `reason`, "throw-number", or anything else.
void failAsSet(const char* name, const char* reason) {
  const std::string outcome = setting(name);
  if (outcome == "throw") throw OwnFailure(reason);
  if (outcome == "throw-number") throw 42;  // NOLINT: no exception of the contract
}

}  // namespace

TestPlugin::TestPlugin() { trace("construct"); }

TestPlugin::~TestPlugin() { trace("destroy"); }

bool TestPlugin::initialize() {
  trace("initialize");
  failAsSet("TEST_PLUGIN_INITIALIZE", "no storage today");
  return setting("TEST_PLUGIN_INITIALIZE") != "false";
}

void TestPlugin::finish() {
  trace("finish");
  failAsSet("TEST_PLUGIN_FINISH", "no end today");
}

std::int32_t TestPlugin::getStatus() {
  const std::string status = setting("TEST_PLUGIN_STATUS");
  return status.empty() ? 0 : std::stoi(status);
}

std::vector<std::wstring> TestPlugin::getHandledPaths() {
  trace("getHandledPaths");
  failAsSet("TEST_PLUGIN_PATHS", "no paths today");
  return {L"test", L"test/things", L"test/things/deep"};
}

namespace {

ServiceObject echo(const std::wstring& path, std::int32_t method, const std::vector<std::wstring>& segments,
                   const std::map<std::wstring, std::wstring>& parameters, const ServiceObject& body) {
  ServiceObject echoed;
  echoed.member(L"path") = path;
  echoed.member(L"method") = std::int64_t{method};
  echoed.member(L"segments") = ServiceObject::array();
  for (std::size_t i = 0; i < segments.size(); ++i) echoed.member(L"segments").at(i) = segments[i];
  echoed.member(L"parameters") = ServiceObject::object();
  for (const auto& [name, value] : parameters) echoed.member(L"parameters").member(name) = value;
  echoed.member(L"body") = body;
  echoed.member(L"bodyAlternative") = std::int64_t{body.which()};
  return echoed;
}

}  // namespace

ServiceObject TestPlugin::handleRequest(std::wstring path, std::int32_t method,
                                        std::vector<std::wstring> segments,
                                        std::map<std::wstring, std::wstring> parameters, ServiceObject body) {
  if (path == L"test" && m_commands.knows(segments)) return m_commands.run(segments, parameters);
  trace("handleRequest");
  return echo(path, method, segments, parameters, body);
}
