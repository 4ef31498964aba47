// The two exports, and a witness of the module's own end.
#include <memory>

#include "host/test_plugin/export.h"
#include "host/test_plugin/test_plugin.h"
#include "host/test_plugin/trace.h"
#include "plugin_interface.h"

namespace {

struct Unloading {
  ~Unloading() { trace("unload"); }
};

const Unloading kUnloading;

/// A plug-in, but none that serves requests.
class BarePlugin : public ovra::plugin_interface {
 public:
  const std::wstring& getShortName() const override { return m_name; }
  const std::wstring& getName() const override { return m_name; }
  const PluginVersion& getVersion() const override { return kTestPluginVersion; }
  const std::wstring& getCode() const override { return m_name; }
  const std::wstring& getApiVersion() const override { return m_name; }
  bool initialize() override { return true; }
  void finish() override {}
  std::int32_t getStatus() override { return 0; }

 private:
  const std::wstring m_name = L"bare";
};

}  // namespace

MIRN_TEST_EXPORT void discover_plugin(PluginDescription& out) {
  trace("discover_plugin");
  out.name = kTestPluginName;
  out.code = L"test";
  out.apiVersion = L"v7";
  out.version = kTestPluginVersion;
}

/// TEST_PLUGIN_REGISTER makes it register nothing ("nothing"), or a plug-in without requests ("bare").
MIRN_TEST_EXPORT bool register_plugin(PluginRegistrar& registrar) {
  trace("register_plugin");
  const std::string what = setting("TEST_PLUGIN_REGISTER");
  if (what == "nothing") return true;
  if (what == "bare") return registrar.addPlugin(std::make_shared<BarePlugin>());
  return registrar.addPlugin(std::make_shared<TestPlugin>());
}
