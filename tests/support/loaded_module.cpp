#include "support/loaded_module.h"

namespace {

struct Registrar final : PluginRegistrar {
  bool addPlugin(std::shared_ptr<ovra::plugin_interface> given) override {
    plugin = std::move(given);
    return accepted;
  }

  std::shared_ptr<ovra::plugin_interface> plugin;
  bool accepted = true;
};

}  // namespace

LoadedModule::LoadedModule(const std::string& path) : m_handle(load(path)) {
  m_discover = reinterpret_cast<DiscoverPluginFunction>(exportOf(m_handle, kDiscoverPluginName));
  m_register = reinterpret_cast<RegisterPluginFunction>(exportOf(m_handle, kRegisterPluginName));
}

LoadedModule::~LoadedModule() { unload(m_handle); }

PluginDescription LoadedModule::discover() const {
  PluginDescription description{L"a name", L"a code", L"a word", {1, 2, 3, 4}};
  m_discover(description);
  return description;
}

std::shared_ptr<ovra::service_plugin_interface> LoadedModule::registerPlugin() const {
  Registrar registrar;
  m_register(registrar);
  return std::dynamic_pointer_cast<ovra::service_plugin_interface>(registrar.plugin);
}

bool LoadedModule::registerWith(bool accepted) const {
  Registrar registrar;
  registrar.accepted = accepted;
  return m_register(registrar);
}
