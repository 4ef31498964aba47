#include <gtest/gtest.h>

#include "http_method.h"
#include "support/library_in_process.h"
#include "support/loaded_module.h"

using ovra::data_transfer::ServiceObject;

namespace {

// This program links no library of that name. What the loader searches ahead of the module's own folder has
// another one: a folder of the environment, or, on Windows, the one that this program lies in.
TEST(SearchPath, PutsAnotherLibraryUnderTheUnchangedModule) {
  ASSERT_EQ(pathOfLibrary("VEXL2"), "");
  const LoadedModule module(MIRN_TEST_MODULE);
  EXPECT_EQ(pathOfLibrary("VEXL2").parent_path().filename(), "scripted");

  const auto plugin = module.registerPlugin();
  ASSERT_TRUE(plugin->initialize());
  const ServiceObject version =
      plugin->handleRequest(L"mirn", HttpMethod::kGet, {L"version"}, {}, ServiceObject::null());
  EXPECT_FALSE(version.member(L"vexVersion").toString().empty());

  const auto release =
      reinterpret_cast<void (*)()>(exportOfLibrary("VEXL2", "scripted_library_release_events"));
  ASSERT_NE(release, nullptr);
  release();
  plugin->finish();
}

}  // namespace
