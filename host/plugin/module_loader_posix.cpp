#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

#include "plugin/module_loader.h"

namespace host {

namespace {

/// A bare name would be looked for along the library path; here it is a file like any other.
std::string filePath(const std::string& path) { return std::filesystem::absolute(path).string(); }

}  // namespace

LoadedModule::LoadedModule(const std::string& path, const std::string& what)
    : m_path(path), m_handle(dlopen(filePath(path).c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (!m_handle) throw std::runtime_error("cannot load the " + what + ": " + dlerror());
}

LoadedModule::~LoadedModule() { dlclose(m_handle); }

void* LoadedModule::findSymbol(const char* name) const {
  void* const symbol = dlsym(m_handle, name);
  if (!symbol) throw std::runtime_error("\"" + m_path + "\" is no plug-in module: it exports no " + name);
  return symbol;
}

void* LoadedModule::findAnywhere(const char* name) const { return dlsym(m_handle, name); }

std::string fileOf(const void* symbol) {
  Dl_info found{};
  return dladdr(symbol, &found) != 0 && found.dli_fname != nullptr ? found.dli_fname : std::string();
}

}  // namespace host
