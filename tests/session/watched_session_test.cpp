#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <boost/optional/optional_io.hpp>
#include <functional>
#include <future>
#include <limits>
#include <thread>
#include <utility>

#include "event_journal.h"
#include "support/session_fixture.h"
#include "tick_clock.h"
#include "vex_exception.h"

namespace {

using namespace small_machine;
using ovra::PluginPosition;

constexpr std::int64_t kForever = std::numeric_limits<std::int64_t>::max();

/// A session whose recording of events a test can hold up.
class HeldSession : public ImpatientSession {
 public:
  std::function<void()> beforeEvents;  ///< Runs once.

 protected:
  void recordEvents(const MirnSnapshot& before, const MirnSnapshot& now) override {
    if (const auto hook = std::exchange(beforeEvents, nullptr)) hook();
    MirnSession::recordEvents(before, now);
  }
};

class WatchedSession : public testing::Test {
 protected:
  void TearDown() override {
    m_library.events().release();
    m_session.stop();
  }

  void setData(std::uint32_t state) {
    m_library.change([state](ScriptedMachine& machine) { machine.volumes.at(kDataVolume).state = state; });
  }

  PluginPosition position() { return m_session.changes().position(); }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  DefaultSettings m_settings;
  LogLines m_log;
  HeldSession m_session;
};

// Events behind the exchange

TEST_F(WatchedSession, WakesAWaiterAgainForEventsThatFollowAnExchangeMuchLater) {
  m_session.start();
  m_library.events().waitForEventWaits(1);
  std::promise<void> exchanged;
  std::promise<void> goOn;
  m_session.beforeEvents = [&] {
    exchanged.set_value();
    goOn.get_future().wait();
  };

  const PluginPosition start = position();
  setData(VEX_VOLUME_STATE_DEGRADED);
  m_library.events().wake();
  ASSERT_TRUE(m_session.changes().waitForChange(start, kForever));
  exchanged.get_future().wait();

  const PluginPosition afterExchange = position();
  EXPECT_GT(afterExchange.revision, start.revision);
  EXPECT_EQ(afterExchange.sequence, start.sequence) << "no event yet";
  EXPECT_EQ(withHandle(m_session.getVolumes(), kDataVolume).state(), VolumeState::DEGRADED);

  std::thread waiter([&] { EXPECT_TRUE(m_session.changes().waitForChange(afterExchange, kForever)); });
  while (m_session.changes().waiters() != 1) std::this_thread::yield();
  goOn.set_value();
  waiter.join();
  EXPECT_EQ(position().sequence, start.sequence + 1);
  EXPECT_EQ(position().revision, afterExchange.revision) << "and nothing else has changed";
}

// Position and picture

TEST_F(WatchedSession, GivesAPictureWithThePositionThatBelongsToIt) {
  m_session.refresh(false);
  const DatedPicture before = m_session.datedPicture();
  EXPECT_EQ(before.position.revision, position().revision);
  setData(VEX_VOLUME_STATE_DEGRADED);
  m_session.refresh(false);
  const DatedPicture after = m_session.datedPicture();
  EXPECT_GT(after.position.revision, before.position.revision);
  EXPECT_EQ(withHandle(before.picture->volumes, kDataVolume).state(), VolumeState::NORMAL);
  EXPECT_EQ(withHandle(after.picture->volumes, kDataVolume).state(), VolumeState::DEGRADED);
}

/// Whoever sees a revision sees its picture.
TEST_F(WatchedSession, NeverGivesANewPictureWithAnOldPosition) {
  m_session.start();
  m_library.events().waitForEventWaits(1);
  std::atomic<bool> over{false};
  std::thread reader([&] {
    std::uint64_t revision = 0;
    VolumeState state = VolumeState::UNKNOWN;
    while (!over) {
      const DatedPicture dated = m_session.datedPicture();
      const VolumeState now = withHandle(dated.picture->volumes, kDataVolume).state();
      if (revision == dated.position.revision) {
        ASSERT_EQ(now, state);
      }
      revision = dated.position.revision;
      state = now;
    }
  });
  for (int round = 0; round < 100; ++round) {
    setData(round % 2 == 0 ? VEX_VOLUME_STATE_DEGRADED : VEX_VOLUME_STATE_NORMAL);
    m_library.events().wakeAndSettle();
  }
  over = true;
  reader.join();
}

// Times

TEST_F(WatchedSession, HasNoTimesAheadOfItsFirstPicture) {
  const PictureTimes times = m_session.datedPicture().times;
  EXPECT_FALSE(times.takenAt);
  EXPECT_FALSE(times.failure);
}

TEST_F(WatchedSession, TellsWhenThePictureWasTaken) {
  const std::int64_t before = currentTicks();
  m_session.refresh(false);
  const PictureTimes times = m_session.datedPicture().times;
  ASSERT_TRUE(times.takenAt);
  EXPECT_GE(*times.takenAt, before);
  EXPECT_LE(*times.takenAt, currentTicks());
  EXPECT_FALSE(times.failure);
}

TEST_F(WatchedSession, TellsOfAFailureUntilAPictureIsHad) {
  m_session.refresh(false);
  const DatedPicture whole = m_session.datedPicture();
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  m_session.refresh(false);
  const DatedPicture failed = m_session.datedPicture();
  EXPECT_EQ(failed.picture, whole.picture) << "the old picture stays";
  EXPECT_EQ(failed.times.takenAt, whole.times.takenAt);
  EXPECT_EQ(failed.position.revision, whole.position.revision);
  ASSERT_TRUE(failed.times.failure);
  EXPECT_GE(failed.times.failure->at, *whole.times.takenAt);
  EXPECT_EQ(failed.times.failure->words, "Failed to open a session");

  m_session.refresh(false);
  EXPECT_FALSE(m_session.datedPicture().times.failure);
  EXPECT_GE(*m_session.datedPicture().times.takenAt, failed.times.failure->at);
}

TEST_F(WatchedSession, TellsOfAFailureThatAnActionRaises) {
  m_session.refresh(false);
  m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
  EXPECT_THROW(m_session.rescan(), VexException);
  ASSERT_TRUE(m_session.datedPicture().times.failure);
  EXPECT_FALSE(m_session.datedPicture().times.failure->words.empty());
}

TEST_F(WatchedSession, HasNoTimeOfTheEmptyPictureAfterAFailedRestart) {
  m_session.refresh(false);
  const PluginPosition before = position();
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  m_session.start();
  m_library.events().waitForEventWaits(1);
  const DatedPicture dated = m_session.datedPicture();
  EXPECT_FALSE(dated.times.takenAt);
  EXPECT_TRUE(dated.times.failure);
  EXPECT_TRUE(dated.picture->volumes.empty());
  EXPECT_GT(dated.position.structure, before.structure);
}

// The first picture of a start

TEST_F(WatchedSession, ComparesTheFirstPictureOfAStartWithTheLastOneAheadOfIt) {
  m_session.refresh(false);
  const PluginPosition before = position();
  m_session.start();
  m_library.events().waitForEventWaits(1);
  EXPECT_EQ(position().revision, before.revision);
  EXPECT_EQ(position().structure, before.structure);
}

TEST_F(WatchedSession, RisesWhenAStartIsThrownOutAndServesAnEmptyPicture) {
  m_session.refresh(false);
  const PluginPosition before = position();
  m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
  EXPECT_THROW(m_session.start(), VexException);
  EXPECT_TRUE(m_session.datedPicture().picture->volumes.empty());
  EXPECT_GT(position().structure, before.structure);
}

}  // namespace
