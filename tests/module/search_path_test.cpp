#include <dlfcn.h>
#include <gtest/gtest.h>
#include <link.h>

#include <string>

#include "http_method.h"
#include "support/loaded_module.h"

using ovra::data_transfer::ServiceObject;

namespace {

/// Where the loader took the library named VEXL2 from.
std::string pathOfLibrary() {
  void* const handle = dlopen("libVEXL2.so", RTLD_NOW | RTLD_NOLOAD);
  if (!handle) return {};
  link_map* map = nullptr;
  dlinfo(handle, RTLD_DI_LINKMAP, &map);
  const std::string path = map->l_name;
  dlclose(handle);
  return path;
}

// This program links no library of that name; its environment puts another one in front of the module's own.
TEST(SearchPath, PutsAnotherLibraryUnderTheUnchangedModule) {
  const LoadedModule module(MIRN_TEST_MODULE);
  EXPECT_NE(pathOfLibrary().find("/scripted/"), std::string::npos) << pathOfLibrary();

  const auto plugin = module.registerPlugin();
  ASSERT_TRUE(plugin->initialize());
  const ServiceObject version =
      plugin->handleRequest(L"mirn", HttpMethod::kGet, {L"version"}, {}, ServiceObject::null());
  EXPECT_FALSE(version.member(L"vexVersion").toString().empty());

  void* const library = dlopen("libVEXL2.so", RTLD_NOW | RTLD_NOLOAD);
  const auto release = reinterpret_cast<void (*)()>(dlsym(library, "scripted_library_release_events"));
  ASSERT_NE(release, nullptr);
  release();
  plugin->finish();
  dlclose(library);
}

}  // namespace
