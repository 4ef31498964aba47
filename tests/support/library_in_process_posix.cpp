#include <dlfcn.h>
#include <link.h>

#include <memory>

#include "support/library_in_process.h"

namespace {

struct Release {
  void operator()(void* handle) const { dlclose(handle); }
};

std::unique_ptr<void, Release> find(const std::string& name) {
  return std::unique_ptr<void, Release>(dlopen(("lib" + name + ".so").c_str(), RTLD_NOW | RTLD_NOLOAD));
}

}  // namespace

std::filesystem::path pathOfLibrary(const std::string& name) {
  const auto library = find(name);
  link_map* map = nullptr;
  if (!library || dlinfo(library.get(), RTLD_DI_LINKMAP, &map) != 0) return {};
  return map->l_name;
}

void* exportOfLibrary(const std::string& name, const char* symbol) {
  const auto library = find(name);
  return library ? dlsym(library.get(), symbol) : nullptr;
}
