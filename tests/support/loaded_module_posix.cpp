#include <dlfcn.h>

#include <stdexcept>

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

template <class Function>
Function exportOf(void* handle, const char* name) {
  void* const address = dlsym(handle, name);
  if (!address) throw std::runtime_error(dlerror());
  return reinterpret_cast<Function>(address);
}

}  // namespace

LoadedModule::LoadedModule(const std::string& path) : m_handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (!m_handle) throw std::runtime_error(dlerror());
  m_discover = exportOf<DiscoverPluginFunction>(m_handle, kDiscoverPluginName);
  m_register = exportOf<RegisterPluginFunction>(m_handle, kRegisterPluginName);
}

LoadedModule::~LoadedModule() { dlclose(m_handle); }

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

bool LoadedModule::isLoaded(const std::string& path) {
  void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}
