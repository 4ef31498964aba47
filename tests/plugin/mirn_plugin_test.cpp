#include "mirn_plugin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "http_method.h"
#include "scripted_library/scripted_library.h"
#include "service_exceptions.h"
#include "support/default_settings.h"

using ovra::data_transfer::ServiceObject;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Plugin : public testing::Test {
 protected:
  void TearDown() override {
    library.events().release();
    plugin.finish();
  }

  ServiceObject request(const std::wstring& path, std::int32_t method, std::vector<std::wstring> segments) {
    return plugin.handleRequest(path, method, std::move(segments), {}, ServiceObject::null());
  }

  void expectOffline(const std::wstring& path) {
    try {
      request(path, HttpMethod::kGet, {});
      FAIL() << "served";
    } catch (const ListenerException& error) {
      EXPECT_STREQ(error.getErrorId(), "Mirn_OFFLINE");
      EXPECT_STREQ(error.what(), "Mirn plugin does not work");
    }
  }

  int countOf(const std::string& operation) const {
    int count = 0;
    for (const ScriptedCall& call : library.calls()) count += call.operation == operation ? 1 : 0;
    return count;
  }

  /// Stops what `initialize` started, as a host does.
  void finish() {
    library.events().release();
    plugin.finish();
  }

  const DefaultSettings settings;
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  mirn_plugin plugin;
};

TEST_F(Plugin, CallsNoLibraryFunctionWhenItIsMade) { EXPECT_THAT(library.callTexts(), IsEmpty()); }

TEST_F(Plugin, ListsNineKeysBeforeInitialize) {
  EXPECT_THAT(plugin.getHandledPaths(),
              ElementsAre(L"mirn", L"mirn/arrays", L"mirn/controllers", L"mirn/disks", L"mirn/enddevices",
                          L"mirn/events", L"mirn/ports", L"mirn/raids", L"mirn/volumes"));
}

TEST_F(Plugin, RefusesEveryRequestBeforeInitialize) {
  for (const std::wstring& path : plugin.getHandledPaths()) expectOffline(path);
  expectOffline(L"mirn/unknown");
  EXPECT_EQ(plugin.getStatus(), 1);
  EXPECT_THAT(library.callTexts(), IsEmpty());
}

TEST_F(Plugin, ServesRequestsOnceInitialized) {
  ASSERT_TRUE(plugin.initialize());
  EXPECT_EQ(plugin.getStatus(), 0);
  EXPECT_EQ(request(L"mirn", HttpMethod::kGet, {L"state"}).member(L"state").toString(), L"NORMAL");
}

class PluginBranch : public Plugin, public testing::WithParamInterface<const wchar_t*> {};

TEST_P(PluginBranch, AnswersItsList) {
  ASSERT_TRUE(plugin.initialize());
  EXPECT_TRUE(request(GetParam(), HttpMethod::kGet, {}).isArray());
}

INSTANTIATE_TEST_SUITE_P(Keys, PluginBranch,
                         testing::Values(L"mirn/arrays", L"mirn/controllers", L"mirn/enddevices",
                                         L"mirn/ports", L"mirn/raids", L"mirn/volumes"));

TEST_F(Plugin, FindsTheEventsBranch) {
  ASSERT_TRUE(plugin.initialize());
  const ServiceObject events =
      plugin.handleRequest(L"mirn/events", HttpMethod::kGet, {}, {{L"time", L"0"}}, ServiceObject::null());
  EXPECT_TRUE(events.isArray());
}

TEST_F(Plugin, FindsTheDisksBranch) {
  ASSERT_TRUE(plugin.initialize());
  try {
    request(L"mirn/disks", HttpMethod::kDelete, {L"nosuchdisk"});
    FAIL() << "served";
  } catch (const ListenerException& error) {
    EXPECT_STREQ(error.what(), "Disk identifier not found");
  }
}

TEST_F(Plugin, RefusesAgainOnceFinished) {
  ASSERT_TRUE(plugin.initialize());
  finish();
  expectOffline(L"mirn");
  EXPECT_EQ(plugin.getStatus(), 1);
}

TEST_F(Plugin, FinishTwiceClosesTheLibraryOnce) {
  ASSERT_TRUE(plugin.initialize());
  finish();
  finish();
  EXPECT_EQ(countOf("VexFinalize"), 1);
}

TEST_F(Plugin, FinishEndsTheEventThreadBeforeItClosesTheLibrary) {
  ASSERT_TRUE(plugin.initialize());
  finish();
  const std::vector<std::string> calls = library.callTexts();
  ASSERT_GE(calls.size(), 2u);
  EXPECT_EQ(calls.back(), "VexFinalize()");
  EXPECT_THAT(calls[calls.size() - 2], testing::StartsWith("VexFreeEventHandle("));
}

TEST_F(Plugin, CanBeInitializedAgainAfterFinish) {
  ASSERT_TRUE(plugin.initialize());
  finish();
  library.events().reset();
  ASSERT_TRUE(plugin.initialize());
  EXPECT_EQ(plugin.getStatus(), 0);
  EXPECT_TRUE(request(L"mirn/volumes", HttpMethod::kGet, {}).isArray());
}

TEST_F(Plugin, ALibraryThatRefusesToInitializeLeavesThePluginOffline) {
  library.answer(onCall("VexInitialize"), VEX_STATUS_FAILED);
  testing::internal::CaptureStderr();
  EXPECT_FALSE(plugin.initialize());
  EXPECT_THAT(
      testing::internal::GetCapturedStderr(),
      testing::HasSubstr("Error: Ordan (R) Mirn Plug-In: Mirn VEX session could not be initialized\n"));
  EXPECT_THAT(library.callTexts(), ElementsAre("VexInitialize()"));
  expectOffline(L"mirn");
  plugin.finish();
  EXPECT_THAT(library.callTexts(), ElementsAre("VexInitialize()"));
}

TEST_F(Plugin, AFailedFirstSnapshotDoesNotFailTheStart) {
  library.answer(onCall("VexSessionOpen"), VEX_STATUS_FAILED);
  testing::internal::CaptureStderr();
  EXPECT_TRUE(plugin.initialize());
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              testing::HasSubstr("Warning: Ordan (R) Mirn Plug-In: Failed to open a session\n"));
  EXPECT_TRUE(request(L"mirn/volumes", HttpMethod::kGet, {}).isArray());
}

TEST_F(Plugin, StatusAsksTheLibraryEachTimeAndChangesNothing) {
  ASSERT_TRUE(plugin.initialize());
  library.answer(onCall("VexGetSystemInfo"), VEX_STATUS_BUSY);
  EXPECT_EQ(plugin.getStatus(), 1);
  EXPECT_EQ(plugin.getStatus(), 0);
  library.answer(onEveryCall("VexGetSystemInfo"), VEX_STATUS_BUSY);
  EXPECT_EQ(plugin.getStatus(), 1);
  EXPECT_NO_THROW(request(L"mirn/volumes", HttpMethod::kGet, {}));
}

TEST_F(Plugin, AnUnknownKeyIsNoStatus404) {
  ASSERT_TRUE(plugin.initialize());
  for (const wchar_t* const path : {L"mirn/unknown", L"MIRN", L"", L"mirn/", L"/mirn", L"mirn/volumes/7"}) {
    try {
      request(path, HttpMethod::kGet, {});
      FAIL() << "served";
    } catch (const std::out_of_range& error) {
      EXPECT_STREQ(error.what(), "invalid map<K, T> key");
    }
  }
}

TEST_F(Plugin, SegmentsThatMatchNoRouteAreStatus404) {
  ASSERT_TRUE(plugin.initialize());
  try {
    request(L"mirn/volumes", HttpMethod::kGet, {L"7"});
    FAIL() << "served";
  } catch (const ovra::common::HttpClientErrorException& error) {
    EXPECT_EQ(error.status, 404);
    EXPECT_STREQ(error.what(), "Request is not supported");
  }
}

TEST_F(Plugin, TellsItsIdentity) {
  EXPECT_EQ(plugin.getName(), L"Ordan Mirn plugin");
  EXPECT_EQ(plugin.getShortName(), L"Mirn plugin");
  EXPECT_EQ(plugin.getCode(), L"mirn");
  EXPECT_EQ(plugin.getApiVersion(), L"v1");
  EXPECT_EQ(plugin.getVersion().build, 1465u);
}

}  // namespace
