#include <windows.h>
// After the header that it needs.
#include <psapi.h>

#include <boost/algorithm/string/replace.hpp>
#include <filesystem>
#include <vector>

#include "plugin/module_loader.h"
#include "system_reason.h"

namespace host {

namespace {

/// An absolute path, so that the module is a file like any other, and the libraries beside it
/// are found first.
HMODULE load(const std::string& path, const std::string& what) {
  const std::filesystem::path file = std::filesystem::absolute(std::filesystem::u8path(path));
  const HMODULE loaded = ::LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (loaded) return loaded;
  std::string reason = lastSystemFailure().what();
  boost::algorithm::replace_all(reason, "%1", "it");  // the place of the file's name in some messages
  throw std::runtime_error("cannot load the " + what + ": " + file.u8string() + ": " + reason);
}

HMODULE handleOf(void* module) { return static_cast<HMODULE>(module); }

void* symbolOf(HMODULE module, const char* name) {
  return reinterpret_cast<void*>(::GetProcAddress(module, name));
}

/// All that this process has loaded; none when the system does not tell.
std::vector<HMODULE> loadedModules() {
  std::vector<HMODULE> modules;
  DWORD bytes = 0;
  do {
    modules.resize(modules.size() + 256);
    const auto room = static_cast<DWORD>(modules.size() * sizeof(HMODULE));
    if (!::K32EnumProcessModules(::GetCurrentProcess(), modules.data(), room, &bytes)) return {};
  } while (bytes > modules.size() * sizeof(HMODULE));
  modules.resize(bytes / sizeof(HMODULE));
  return modules;
}

}  // namespace

LoadedModule::LoadedModule(const std::string& path, const std::string& what)
    : m_path(path), m_handle(load(path, what)) {}

LoadedModule::~LoadedModule() { ::FreeLibrary(handleOf(m_handle)); }

void* LoadedModule::findSymbol(const char* name) const {
  void* const symbol = symbolOf(handleOf(m_handle), name);
  if (!symbol) throw std::runtime_error("\"" + m_path + "\" is no plug-in module: it exports no " + name);
  return symbol;
}

void* LoadedModule::findAnywhere(const char* name) const {
  if (void* const symbol = symbolOf(handleOf(m_handle), name)) return symbol;
  for (const HMODULE module : loadedModules()) {
    if (void* const symbol = symbolOf(module, name)) return symbol;
  }
  return nullptr;
}

std::string fileOf(const void* symbol) {
  constexpr DWORD kFlags =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  HMODULE module = nullptr;
  if (!::GetModuleHandleExW(kFlags, static_cast<const wchar_t*>(symbol), &module)) return {};
  std::wstring name(32768, L'\0');  // the longest that there is
  name.resize(::GetModuleFileNameW(module, &name[0], static_cast<DWORD>(name.size())));
  return std::filesystem::path(name).u8string();
}

}  // namespace host
