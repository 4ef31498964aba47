#include <dlfcn.h>

#include <stdexcept>

#include "support/loaded_module.h"

void* LoadedModule::load(const std::string& path) {
  void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) throw std::runtime_error(dlerror());
  return handle;
}

void* LoadedModule::exportOf(void* handle, const char* name) {
  void* const address = dlsym(handle, name);
  if (!address) throw std::runtime_error(dlerror());
  return address;
}

void LoadedModule::unload(void* handle) { dlclose(handle); }

bool LoadedModule::isLoaded(const std::string& path) {
  void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle) dlclose(handle);
  return handle != nullptr;
}
