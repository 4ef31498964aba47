#include "mirn_plugin.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <iostream>
#include <memory>
#include <thread>

#include "http_method.h"
#include "logger.h"
#include "plugin/start_patience.h"
#include "scripted_library/scripted_library.h"
#include "service_exceptions.h"
#include "support/by_name.h"
#include "support/default_settings.h"
#include "support/log_lines.h"
#include "support/machine_settings.h"
#include "support/redirected_stream.h"

using ovra::data_transfer::ServiceObject;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// While it lives, nothing can be written to the console of warnings and errors.
class BrokenConsole {
 public:
  BrokenConsole() { std::wcerr.exceptions(std::ios::badbit); }
  BrokenConsole(const BrokenConsole&) = delete;
  BrokenConsole& operator=(const BrokenConsole&) = delete;
  ~BrokenConsole() { std::wcerr.exceptions(std::ios::goodbit); }

 private:
  struct Buffer : std::wstreambuf {
    std::streamsize xsputn(const wchar_t*, std::streamsize) override {
      throw std::runtime_error("out of paper");
    }
  };

  Buffer m_buffer;
  RedirectedStream m_redirected{std::wcerr, m_buffer};
};

/// Holds the next call of an operation inside the library until it is let go.
class HeldCall {
 public:
  HeldCall(ScriptedLibrary& library, const std::string& operation) {
    library.before(onCall(operation), [this](const ScriptedCall&) {
      m_inside.set_value();
      m_goOn.get_future().wait();
    });
  }

  void waitUntilInside() { m_inside.get_future().wait(); }
  void letGo() { m_goOn.set_value(); }

 private:
  std::promise<void> m_inside;
  std::promise<void> m_goOn;
};

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
    } catch (const std::exception& error) {
      FAIL() << "served, with the failure " << error.what();
    }
  }

  bool isServed() {
    try {
      request(L"mirn", HttpMethod::kGet, {L"state"});
      return true;
    } catch (const ListenerException&) {
      return false;
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

struct Branch {
  const char* name;
  const wchar_t* key;
  std::size_t objects;
  const wchar_t* member;  ///< That objects of no other branch have.
};

class PluginBranch : public Plugin, public testing::WithParamInterface<Branch> {};

TEST_P(PluginBranch, AnswersItsOwnList) {
  ASSERT_TRUE(plugin.initialize());
  const ServiceObject list = request(GetParam().key, HttpMethod::kGet, {});
  ASSERT_TRUE(list.isArray());
  std::size_t objects = 0;
  const auto end = list.end();
  for (auto child = list.begin(); child != end; ++child, ++objects) {
    EXPECT_TRUE((*child).value->hasKey(GetParam().member));
  }
  EXPECT_EQ(objects, GetParam().objects);
}

INSTANTIATE_TEST_SUITE_P(Keys, PluginBranch,
                         testing::Values(Branch{"Arrays", L"mirn/arrays", 1, L"numVolumes"},
                                         Branch{"Controllers", L"mirn/controllers", 2, L"supportedFunctions"},
                                         Branch{"EndDevices", L"mirn/enddevices", 7, L"serialNumber"},
                                         Branch{"Ports", L"mirn/ports", 14, L"numPhys"},
                                         Branch{"Raids", L"mirn/raids", 2, L"maxVolumesPerHba"},
                                         Branch{"Volumes", L"mirn/volumes", 2, L"arrayOrdinal"}),
                         ByName());

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

TEST_F(Plugin, RefusesRequestsWhileFinishStillWaits) {
  ASSERT_TRUE(plugin.initialize());
  library.events().waitForEventWaits(1);
  std::atomic<bool> finished{false};
  std::thread finishing([this, &finished] {
    plugin.finish();
    finished = true;
  });
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (isServed() && std::chrono::steady_clock::now() < deadline) std::this_thread::yield();
  expectOffline(L"mirn");
  EXPECT_FALSE(finished) << "the event thread still waits in the library";
  library.events().release();
  finishing.join();
}

TEST_F(Plugin, RefusesRequestsBeforeItClosesTheLibrary) {
  ASSERT_TRUE(plugin.initialize());
  int closed = 0;
  library.before(onCall("VexFinalize"), [this, &closed](const ScriptedCall&) {
    expectOffline(L"mirn");
    ++closed;
  });
  finish();
  EXPECT_EQ(closed, 1);
}

TEST_F(Plugin, IsOfflineWhileItIsInitializedAgain) {
  ASSERT_TRUE(plugin.initialize());
  int initialized = 0;
  library.before(onCall("VexInitialize"), [this, &initialized](const ScriptedCall&) {
    expectOffline(L"mirn");
    ++initialized;
  });
  ASSERT_TRUE(plugin.initialize());
  EXPECT_EQ(initialized, 1);
  EXPECT_NO_THROW(request(L"mirn", HttpMethod::kGet, {L"state"}));
}

TEST_F(Plugin, StaysOfflineWhenItIsInitializedAgainAndTheLibraryRefuses) {
  ASSERT_TRUE(plugin.initialize());
  library.answer(onCall("VexInitialize"), VEX_STATUS_ALREADY_INITIALIZED);
  LogLines log;
  EXPECT_FALSE(plugin.initialize());
  EXPECT_THAT(log.take(),
              ElementsAre("Error: Ordan (R) Mirn Plug-In: Mirn VEX session could not be initialized"));
  expectOffline(L"mirn");
  EXPECT_EQ(plugin.getStatus(), 1);
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

TEST_F(Plugin, AStartThatDoesNotGetItsLockInTimeClosesTheLibraryAndLeavesThePluginOffline) {
  ASSERT_TRUE(plugin.initialize());
  // Waits end, but bring no refresh, which would want the lock as well.
  library.answer(onEveryCall("VexEventWait"), VEX_STATUS_BUSY);
  HeldCall rescan(library, "VexRescan");
  std::thread client([this] { request(L"mirn", HttpMethod::kPost, {L"rescan"}); });
  rescan.waitUntilInside();
  library.events().wake(VEX_STATUS_BUSY);
  plugin.finish();
  library.clearCalls();

  startPatience = 0;
  LogLines log;
  EXPECT_FALSE(plugin.initialize());
  EXPECT_THAT(log.take(),
              ElementsAre("Error: Ordan (R) Mirn Plug-In: Mirn VEX session could not be started"));
  EXPECT_THAT(library.callTexts(), ElementsAre("VexInitialize()", "VexFinalize()"));
  expectOffline(L"mirn");

  rescan.letGo();
  client.join();
  startPatience.reset();
  EXPECT_TRUE(plugin.initialize()) << "once the lock is free";
}

TEST_F(Plugin, ItsEndClosesNoLibraryThatTheHostLeftOpen) {
  auto forgotten = std::make_unique<mirn_plugin>();
  ASSERT_TRUE(forgotten->initialize());
  library.events().release();
  forgotten.reset();
  EXPECT_EQ(countOf("VexFinalize"), 0);
  EXPECT_EQ(countOf("VexFreeEventHandle"), 1) << "but its thread has ended";
}

TEST_F(Plugin, AFailureOfTheLoggerPassesOutOfInitialize) {
  library.answer(onCall("VexInitialize"), VEX_STATUS_FAILED);
  const BrokenConsole console;
  EXPECT_THROW(plugin.initialize(), ovra::LoggerException);
}

TEST(PluginConstruction, LetsAFailureOfTheLoggerPass) {
  ScriptedLibrary::fresh();
  const MachineSettings none;  // which is worth a warning
  const BrokenConsole console;
  EXPECT_THROW(mirn_plugin(), ovra::LoggerException);
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
