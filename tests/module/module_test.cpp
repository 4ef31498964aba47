#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "http_method.h"
#include "scripted_library/scripted_library.h"
#include "service_exceptions.h"
#include "support/loaded_module.h"
#include "support/log_lines.h"
#include "support/machine_settings.h"
#include "support/process_resources.h"

using ovra::data_transfer::ServiceObject;

namespace {

const std::string kModule = MIRN_TEST_MODULE;

ServiceObject get(ovra::service_plugin_interface& plugin, const std::wstring& path,
                  std::vector<std::wstring> segments = {}) {
  return plugin.handleRequest(path, HttpMethod::kGet, std::move(segments), {}, ServiceObject::null());
}

class Module : public testing::Test {
 protected:
  void TearDown() override { library.events().release(); }

  ScriptedLibrary& library = ScriptedLibrary::fresh();
  LoadedModule module{kModule};
};

TEST_F(Module, DiscoveryReplacesAllFourFields) {
  const PluginDescription description = module.discover();
  EXPECT_EQ(description.name, L"Ordan Mirn plugin");
  EXPECT_EQ(description.code, L"mirn");
  EXPECT_EQ(description.apiVersion, L"v1");
  EXPECT_EQ(description.version.major, 5u);
  EXPECT_EQ(description.version.minor, 4u);
  EXPECT_EQ(description.version.patch, 0u);
  EXPECT_EQ(description.version.build, 1465u);
}

TEST_F(Module, TwoDiscoveriesAreEqual) {
  const PluginDescription first = module.discover();
  const PluginDescription second = module.discover();
  EXPECT_EQ(first.name, second.name);
  EXPECT_EQ(first.code, second.code);
  EXPECT_EQ(first.apiVersion, second.apiVersion);
  EXPECT_EQ(first.version.major, second.version.major);
  EXPECT_EQ(first.version.minor, second.version.minor);
  EXPECT_EQ(first.version.patch, second.version.patch);
  EXPECT_EQ(first.version.build, second.version.build);
}

TEST_F(Module, DiscoveryMakesNoPlugin) {
  const MachineSettings none;  // so that every plug-in warns when it is made
  LogLines log;
  module.discover();
  EXPECT_THAT(log.take(), testing::IsEmpty());
  module.registerPlugin();
  EXPECT_THAT(log.take(), testing::SizeIs(1));
}

TEST_F(Module, EachRegistrationMakesAnotherPlugin) {
  const auto first = module.registerPlugin();
  const auto second = module.registerPlugin();
  ASSERT_TRUE(first);
  ASSERT_TRUE(second);
  EXPECT_NE(first, second);
  EXPECT_EQ(first.use_count(), 1);
}

TEST_F(Module, RegistrationReturnsWhatTheHostAnswers) {
  EXPECT_TRUE(module.registerWith(true));
  EXPECT_FALSE(module.registerWith(false));
}

TEST_F(Module, DiscoveryAndRegistrationCallNoLibraryFunction) {
  module.discover();
  module.registerPlugin();
  EXPECT_THAT(library.callTexts(), testing::IsEmpty());
}

TEST_F(Module, ServesAMachineFromTheLibraryUnderIt) {
  const auto plugin = module.registerPlugin();
  ASSERT_TRUE(plugin->initialize());
  EXPECT_EQ(plugin->getStatus(), 0);
  const ServiceObject volumes = get(*plugin, L"mirn/volumes");
  EXPECT_EQ((*volumes.begin()).value->member(L"name").toString(), L"System");
  library.events().release();
  plugin->finish();
}

TEST_F(Module, ExceptionsCrossTheBoundaryInBothViews) {
  const auto plugin = module.registerPlugin();
  try {
    get(*plugin, L"mirn");
    FAIL() << "served";
  } catch (const std::exception& error) {
    EXPECT_NE(dynamic_cast<const ListenerException*>(&error), nullptr);
    const auto* const withId = dynamic_cast<const ovra::common::IErrorIdException*>(&error);
    ASSERT_NE(withId, nullptr);
    EXPECT_STREQ(withId->getErrorId(), "Mirn_OFFLINE");
  }
}

TEST_F(Module, StatusesCrossTheBoundary) {
  const auto plugin = module.registerPlugin();
  ASSERT_TRUE(plugin->initialize());
  EXPECT_THROW(get(*plugin, L"mirn", {L"nothing"}), ovra::common::HttpClientErrorException);
  library.events().release();
  plugin->finish();
}

/// One life of the module, from load to unload.
void live() {
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  {
    const LoadedModule module(kModule);
    const auto plugin = module.registerPlugin();
    ASSERT_TRUE(plugin->initialize());
    ASSERT_TRUE(get(*plugin, L"mirn/enddevices").isArray());
    library.events().release();
    plugin->finish();
  }
  ASSERT_FALSE(LoadedModule::isLoaded(kModule));
}

// What stays behind is counted after some rounds, when the process itself has warmed up. The allocator's own
// count wavers by the remainders of chunks, ever less from round to round; what each life left behind would
// be a chunk a life, and no chunk is as small as this.
constexpr int kLessThanAChunk = 16;

TEST(ModuleLife, AThousandLivesLeaveNothingBehind) {
  constexpr int kWarmUp = 500;
  constexpr int kLives = 1000;
  keepSystemLibraries();
  ProcessResources warm = {};
  for (int round = 0; round < kLives; ++round) {
    ASSERT_NO_FATAL_FAILURE(live());
    if (round == kWarmUp) warm = processResources();
  }
  const ProcessResources now = processResources();
  EXPECT_EQ(now.threads, warm.threads);
  EXPECT_LE(now.handles, warm.handles + kLateHandles);
  EXPECT_LT(now.bytes, warm.bytes + (kLives - kWarmUp) * kLessThanAChunk);
}

}  // namespace
