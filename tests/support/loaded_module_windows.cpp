#include <windows.h>

#include <filesystem>
#include <stdexcept>

#include "support/loaded_module.h"

namespace {

/// The loader wants backslashes, and the whole path, so that nothing else of that name is meant.
std::wstring wholePath(const std::string& path) {
  return std::filesystem::absolute(std::filesystem::u8path(path)).make_preferred().wstring();
}

HMODULE moduleOf(void* handle) { return static_cast<HMODULE>(handle); }

[[noreturn]] void fail(const std::string& what) {
  throw std::runtime_error(what + ": error " + std::to_string(::GetLastError()));
}

}  // namespace

void* LoadedModule::load(const std::string& path) {
  const HMODULE module = ::LoadLibraryW(wholePath(path).c_str());
  if (!module) fail("cannot load " + path);
  return module;
}

void* LoadedModule::exportOf(void* handle, const char* name) {
  const FARPROC address = ::GetProcAddress(moduleOf(handle), name);
  if (!address) fail(std::string("no export ") + name);
  return reinterpret_cast<void*>(address);
}

void LoadedModule::unload(void* handle) { ::FreeLibrary(moduleOf(handle)); }

bool LoadedModule::isLoaded(const std::string& path) {
  return ::GetModuleHandleW(wholePath(path).c_str()) != nullptr;
}
