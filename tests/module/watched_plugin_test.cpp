#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

#include "module/request.h"
#include "plugin_extensions.h"
#include "scripted_library/scripted_library.h"
#include "scripted_library/small_machine.h"
#include "support/body.h"
#include "support/default_settings.h"
#include "support/loaded_module.h"
#include "support/log_lines.h"
#include "support/text_form.h"
#include "tick_clock.h"

// What the module tells a host of its changes, over the scripted library.

namespace {

using namespace small_machine;
using ovra::PluginPosition;
using testing::ElementsAre;

constexpr std::int64_t kForever = std::numeric_limits<std::int64_t>::max();
constexpr std::uint64_t kAll = std::numeric_limits<std::uint64_t>::max();

class WatchedPlugin : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_watched);
    start();
  }

  void TearDown() override { finish(); }

  void start() {
    m_library.events().reset();
    ASSERT_TRUE(m_plugin->initialize());
    m_library.events().waitForEventWaits(1);
  }

  void finish() {
    m_library.events().release();
    m_plugin->finish();
  }

  /// The event thread looks, and waits again.
  void look(VEX_STATUS status = VEX_STATUS_TIMEOUT) { m_library.events().wakeAndSettle(status); }

  void change(const std::function<void(ScriptedMachine&)>& change) { m_library.change(change); }

  PluginPosition position() { return m_watched->position(); }

  DefaultSettings m_settings;
  LogLines m_log;
  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  LoadedModule m_module{MIRN_TEST_MODULE};
  std::shared_ptr<ovra::service_plugin_interface> m_plugin = m_module.registerPlugin();
  std::shared_ptr<ovra::watched_plugin_1> m_watched =
      std::dynamic_pointer_cast<ovra::watched_plugin_1>(m_plugin);
};

std::vector<std::wstring> textsUnder(const wchar_t* key, const ServiceObject& list) {
  std::vector<std::wstring> texts;
  for (auto element = list.begin(); element != list.end(); ++element) {
    texts.push_back((*element).value->member(key).toString());
  }
  return texts;
}

// Position

TEST_F(WatchedPlugin, StaysWhereItIsOverAHundredTimeOutsOfAQuietMachine) {
  const PluginPosition start = position();
  for (int timeOut = 0; timeOut < 100; ++timeOut) look();
  EXPECT_EQ(position().epoch, start.epoch);
  EXPECT_EQ(position().revision, start.revision);
  EXPECT_EQ(position().structure, start.structure);
  EXPECT_EQ(position().sequence, start.sequence);
}

TEST_F(WatchedPlugin, MovesItsRevisionAloneForEachPercentOfARebuild) {
  change(
      [](ScriptedMachine& machine) { machine.volumes.at(kDataVolume).state = VEX_VOLUME_STATE_REBUILDING; });
  look();
  for (std::uint32_t percent = 1; percent <= 100; ++percent) {
    const PluginPosition before = position();
    change([percent](ScriptedMachine& machine) {
      // Rounded up, so that the plug-in reads the very percent.
      const std::uint64_t fraction = (std::uint64_t{percent} * 0xFFFFFFFFU + 99) / 100;
      machine.volumes.at(kDataVolume).migrationProgress = static_cast<std::uint32_t>(fraction);
    });
    look();
    EXPECT_GT(position().revision, before.revision);
    EXPECT_EQ(position().structure, before.structure);
    EXPECT_EQ(position().sequence, before.sequence);
  }
}

TEST_F(WatchedPlugin, MovesRevisionAndStructureForAnAction) {
  const PluginPosition before = position();
  const std::wstring id = textsUnder(L"id", serve(*m_plugin, get(L"mirn/volumes"))).at(1);
  m_library.before(onCall("VexVolumeRename"), [this](const ScriptedCall&) {
    change([](ScriptedMachine& machine) { setText(machine.volumes.at(kDataVolume).name, "New name"); });
  });
  serve(*m_plugin, put(L"mirn/volumes", {id, L"name"}, body({{"name", "New name"}})));
  EXPECT_GT(position().revision, before.revision);
  EXPECT_GT(position().structure, before.structure);
}

TEST_F(WatchedPlugin, NeverFallsOverFinishAndInitialize) {
  PluginPosition before = position();
  finish();
  EXPECT_EQ(position().revision, before.revision);
  start();
  EXPECT_EQ(position().epoch, before.epoch);
  EXPECT_EQ(position().revision, before.revision) << "the machine is as it was";
  EXPECT_EQ(position().structure, before.structure);
  EXPECT_EQ(position().sequence, before.sequence);

  finish();
  change([](ScriptedMachine& machine) { machine.volumes.remove(kDataVolume); });
  start();
  EXPECT_GT(position().revision, before.revision) << "meanwhile it has changed";
  EXPECT_GT(position().structure, before.structure);
}

TEST_F(WatchedPlugin, MovesWhenARestartFindsNoPicture) {
  const PluginPosition before = position();
  finish();
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  start();
  EXPECT_GT(position().structure, before.structure) << "an empty picture is served";
  const PluginPosition empty = position();
  look();
  EXPECT_GT(position().structure, empty.structure);
  m_log.take();
}

TEST_F(WatchedPlugin, HasAnEpochForTheModuleAndNumbersAboveThoseOfItsEarlierPlugins) {
  const auto other = std::dynamic_pointer_cast<ovra::watched_plugin_1>(m_module.registerPlugin());
  EXPECT_EQ(other->position().epoch, position().epoch);
  EXPECT_GT(other->position().revision, position().revision);
}

// Waiting

TEST_F(WatchedPlugin, WakesWhoWaitsForAChange) {
  const PluginPosition known = position();
  std::thread waiter([&] { EXPECT_TRUE(m_watched->waitForChange(known, kForever)); });
  change([](ScriptedMachine& machine) { machine.volumes.at(kDataVolume).state = VEX_VOLUME_STATE_DEGRADED; });
  look();
  waiter.join();
}

/// Whoever has seen the new revision is woken once more for the events that follow it.
TEST_F(WatchedPlugin, LetsNoEventWaitForAFurtherChange) {
  for (int round = 0; round < 50; ++round) {
    const PluginPosition start = position();
    std::thread waiter([&] {
      PluginPosition known = start;
      while (known.sequence == start.sequence) {
        ASSERT_TRUE(m_watched->waitForChange(known, kForever));
        known = m_watched->position();
      }
    });
    change([round](ScriptedMachine& machine) {
      machine.volumes.at(kDataVolume).state =
          round % 2 == 0 ? VEX_VOLUME_STATE_DEGRADED : VEX_VOLUME_STATE_NORMAL;
    });
    look();
    waiter.join();
  }
}

TEST_F(WatchedPlugin, FinishesWithAHundredWaiters) {
  for (int life = 0; life < 2; ++life) {
    std::vector<std::thread> waiters;
    std::atomic<int> begun{0};
    const PluginPosition known = position();
    for (int i = 0; i < 100; ++i) {
      waiters.emplace_back([&] {
        ++begun;
        EXPECT_FALSE(m_watched->waitForChange(known, kForever));
      });
    }
    while (begun != 100) std::this_thread::yield();
    finish();
    for (std::thread& waiter : waiters) waiter.join();
    start();
    EXPECT_FALSE(m_watched->waitForChange(position(), 1)) << "waiting goes on";
  }
}

TEST_F(WatchedPlugin, ServesManyWatchersBesideRefreshesAndAFinish) {
  std::atomic<bool> over{false};
  std::vector<std::thread> watchers;
  for (int i = 0; i < 4; ++i) {
    watchers.emplace_back([&] {
      PluginPosition known = m_watched->position();
      while (!over) {
        m_watched->waitForChange(known, 5);
        const PluginPosition now = m_watched->position();
        ASSERT_GE(now.revision, known.revision);
        ASSERT_GE(now.structure, known.structure);
        ASSERT_GE(now.sequence, known.sequence);
        const ServiceObject events = m_watched->eventsAfter(known.sequence, kAll);
        ASSERT_GE(textsUnder(L"kind", events.member(L"events")).size(), now.sequence - known.sequence);
        known = now;
      }
    });
  }
  for (int life = 0; life < 3; ++life) {
    for (std::uint32_t round = 0; round < 20; ++round) {
      change([round](ScriptedMachine& machine) {
        machine.volumes.at(kDataVolume).state =
            round % 2 == 0 ? VEX_VOLUME_STATE_DEGRADED : VEX_VOLUME_STATE_NORMAL;
      });
      look();
    }
    finish();
    start();
  }
  over = true;
  for (std::thread& watcher : watchers) watcher.join();
}

// Events

TEST_F(WatchedPlugin, TellsTheEventsAfterANumber) {
  const std::uint64_t known = position().sequence;
  change([](ScriptedMachine& machine) {
    machine.volumes.at(kDataVolume).state = VEX_VOLUME_STATE_DEGRADED;
    machine.endDevices.at(kFree1).diskState = VEX_DISK_STATE_FAILED;
  });
  look();
  EXPECT_EQ(position().sequence, known + 2);
  const ServiceObject events = m_watched->eventsAfter(known, kAll);
  EXPECT_THAT(textsUnder(L"kind", events.member(L"events")), ElementsAre(L"VOLUME_DEGRADED", L"DISK_FAILED"));
  EXPECT_THAT(textsUnder(L"kind", m_watched->eventsAfter(known, 1).member(L"events")),
              ElementsAre(L"VOLUME_DEGRADED"));
  EXPECT_THAT(textsUnder(L"kind", m_watched->eventsAfter(known + 2, kAll).member(L"events")), ElementsAre());
}

TEST_F(WatchedPlugin, KeepsItsEventsOverFinishAndInitialize) {
  const std::uint64_t known = position().sequence;
  change([](ScriptedMachine& machine) { machine.volumes.remove(kDataVolume); });
  look();
  finish();
  EXPECT_THAT(textsUnder(L"objectName", m_watched->eventsAfter(known, kAll).member(L"events")),
              ElementsAre(L"Data"));
  start();
  EXPECT_THAT(textsUnder(L"objectName", m_watched->eventsAfter(known, kAll).member(L"events")),
              ElementsAre(L"Data"));
}

// The whole picture

std::string formOf(const ServiceObject& value) { return textForm(value); }

class WholePicture : public WatchedPlugin {
 protected:
  std::string answerTo(const Request& request) { return formOf(serve(*m_plugin, request)); }
};

TEST_F(WholePicture, HoldsEveryListAsItsRouteAnswers) {
  change(
      [](ScriptedMachine& machine) { machine.volumes.at(kDataVolume).state = VEX_VOLUME_STATE_REBUILDING; });
  look();
  const ServiceObject picture = m_watched->picture();
  EXPECT_EQ(formOf(picture.member(L"state")), answerTo(get(L"mirn", {L"state"})));
  EXPECT_EQ(formOf(picture.member(L"version")), answerTo(get(L"mirn", {L"version"})));
  for (const wchar_t* const list :
       {L"raids", L"controllers", L"arrays", L"enddevices", L"ports", L"volumes"}) {
    const std::string answer = answerTo(get(std::wstring(L"mirn/") + list));
    EXPECT_EQ(formOf(picture.member(list)), answer);
    EXPECT_NE(answer, formOf(ServiceObject::array())) << "something is compared";
  }
  EXPECT_EQ(picture.asObject().size(), 15u);
}

TEST_F(WholePicture, HoldsTheIdsOfEachControllersOwn) {
  const ServiceObject picture = m_watched->picture();
  const std::vector<std::wstring> controllers = textsUnder(L"id", picture.member(L"controllers"));
  ASSERT_EQ(controllers.size(), 2u);
  const std::pair<const wchar_t*, const wchar_t*> kParts[] = {
      {L"controllerArrays", L"arrays"}, {L"controllerPorts", L"ports"}, {L"controllerVolumes", L"volumes"}};
  for (const auto& [key, segment] : kParts) {
    for (const std::wstring& controller : controllers) {
      std::vector<std::wstring> ids =
          textsUnder(L"id", serve(*m_plugin, get(L"mirn/controllers", {controller, segment})));
      std::vector<std::wstring> told;
      const ServiceObject& list = picture.member(key).member(controller);
      for (auto id = list.begin(); id != list.end(); ++id) told.push_back((*id).value->toString());
      EXPECT_THAT(told, testing::UnorderedElementsAreArray(ids));
    }
  }
}

TEST_F(WholePicture, TellsWhereItStandsAndWhenItWasTaken) {
  const ServiceObject picture = m_watched->picture();
  const ServiceObject& told = picture.member(L"position");
  EXPECT_EQ(told.member(L"epoch").toString(), position().epoch);
  EXPECT_EQ(told.member(L"revision").toInt64(), static_cast<std::int64_t>(position().revision));
  EXPECT_EQ(told.member(L"structure").toInt64(), static_cast<std::int64_t>(position().structure));
  EXPECT_EQ(told.member(L"sequence").toInt64(), static_cast<std::int64_t>(position().sequence));
  EXPECT_EQ(picture.member(L"takenAt").which(), 3) << "unsigned";
  const std::int64_t now = currentTicks() / kTicksPerMillisecond;
  EXPECT_LE(picture.member(L"takenAt").toInt64(), now);
  EXPECT_GT(picture.member(L"takenAt").toInt64(), now - 600'000);
  EXPECT_TRUE(picture.member(L"failedAt").isNull());
  EXPECT_TRUE(picture.member(L"failure").isNull());
}

TEST_F(WholePicture, TellsWhyItIsNotRenewed) {
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  look();
  const ServiceObject picture = m_watched->picture();
  EXPECT_EQ(picture.member(L"failure").toString(), L"Failed to open a session");
  EXPECT_GE(picture.member(L"failedAt").toInt64(), picture.member(L"takenAt").toInt64());
  m_log.take();
}

TEST_F(WholePicture, IsEmptyAheadOfTheFirst) {
  const auto other = std::dynamic_pointer_cast<ovra::watched_plugin_1>(m_module.registerPlugin());
  const ServiceObject picture = other->picture();
  EXPECT_TRUE(picture.member(L"takenAt").isNull());
  EXPECT_TRUE(picture.member(L"version").isNull());
  EXPECT_EQ(formOf(picture.member(L"volumes")), formOf(ServiceObject::array()));
  EXPECT_EQ(formOf(picture.member(L"controllerPorts")), formOf(ServiceObject::object()));
}

TEST_F(WholePicture, CallsNoLibraryFunction) {
  m_library.clearCalls();
  m_watched->picture();
  m_watched->position();
  m_watched->eventsAfter(0, kAll);
  EXPECT_THAT(m_library.callTexts(), testing::IsEmpty());
}

}  // namespace
