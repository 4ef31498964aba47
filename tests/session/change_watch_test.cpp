#include "change_watch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <boost/thread/thread.hpp>
#include <chrono>
#include <limits>
#include <memory>
#include <regex>
#include <thread>
#include <vector>

#include "event_journal.h"
#include "events/sample_objects.h"
#include "text.h"

namespace {

using ovra::PluginPosition;

constexpr std::int64_t kForever = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kShort = 20;  // milliseconds

void recordAnEvent() {
  EventJournal::instance().add(std::make_shared<mirn_events::volume_event>(
      EventSeverity::INFO, VolumeEventType::VOLUME_ADDED, sampleVolume(L"1")));
}

class Watch : public testing::Test {
 protected:
  Watch() { m_watch.open(); }

  /// Waits on a thread of its own, for ever.
  std::thread waiter(const PluginPosition& known, bool expected) {
    return std::thread([=] {
      EXPECT_EQ(m_watch.waitForChange(known, kForever), expected);
      ++m_left;
    });
  }

  void waitForWaiters(std::uint64_t count) const {
    while (m_watch.waiters() != count) std::this_thread::yield();
  }

  ChangeWatch m_watch;
  std::atomic<int> m_left{0};
};

// The position

TEST_F(Watch, HasAnEpochOfSixteenHexadecimalDigits) {
  const std::string epoch = wideToUtf8(m_watch.position().epoch);
  EXPECT_TRUE(std::regex_match(epoch, std::regex("[0-9a-f]{16}"))) << epoch;
  EXPECT_EQ(m_watch.position().epoch, ChangeWatch::epoch());
  EXPECT_EQ(ChangeWatch().position().epoch, ChangeWatch::epoch()) << "one for the whole module";
}

TEST_F(Watch, RisesAsFarAsThePicturesDiffer) {
  const PluginPosition start = m_watch.position();
  m_watch.raise(SnapshotDifference::kNone);
  EXPECT_EQ(m_watch.position().revision, start.revision);
  EXPECT_EQ(m_watch.position().structure, start.structure);

  m_watch.raise(SnapshotDifference::kProgress);
  EXPECT_EQ(m_watch.position().revision, start.revision + 1);
  EXPECT_EQ(m_watch.position().structure, start.structure);

  m_watch.raise(SnapshotDifference::kStructure);
  EXPECT_EQ(m_watch.position().revision, start.revision + 2);
  EXPECT_EQ(m_watch.position().structure, start.structure + 1);
}

TEST_F(Watch, CountsTheEventsOfTheJournal) {
  const PluginPosition start = m_watch.position();
  recordAnEvent();
  recordAnEvent();
  EXPECT_EQ(m_watch.position().sequence, start.sequence + 2);
  EXPECT_EQ(m_watch.position().revision, start.revision);
}

TEST_F(Watch, StandsWhereItStoodWhenItIsClosedAndOpenedAgain) {
  m_watch.raise(SnapshotDifference::kStructure);
  const PluginPosition before = m_watch.position();
  m_watch.close();
  EXPECT_EQ(m_watch.position().revision, before.revision);
  m_watch.open();
  EXPECT_EQ(m_watch.position().revision, before.revision);
  EXPECT_EQ(m_watch.position().structure, before.structure);
}

TEST_F(Watch, BeginsAboveEveryEarlierOne) {
  m_watch.raise(SnapshotDifference::kStructure);
  const PluginPosition before = m_watch.position();
  EXPECT_GT(ChangeWatch().position().revision, before.revision);
  EXPECT_GT(ChangeWatch().position().structure, before.structure);
}

// The wait

TEST_F(Watch, SaysAtOnceThatThePositionIsAnotherOne) {
  const PluginPosition now = m_watch.position();
  PluginPosition known = now;
  known.epoch = L"0000000000000000";
  EXPECT_TRUE(m_watch.waitForChange(known, kForever)) << "epoch";
  known = now;
  --known.revision;
  EXPECT_TRUE(m_watch.waitForChange(known, kForever)) << "revision behind";
  known.revision = now.revision + 1;
  EXPECT_TRUE(m_watch.waitForChange(known, kForever)) << "revision ahead";
  known = now;
  ++known.sequence;
  EXPECT_TRUE(m_watch.waitForChange(known, kForever)) << "sequence";
}

TEST_F(Watch, GivesUpWhenTheTimeHasPassedAndNotBefore) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(m_watch.waitForChange(m_watch.position(), kShort));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(kShort));
}

TEST_F(Watch, GivesUpAtOnceWithoutTime) {
  EXPECT_FALSE(m_watch.waitForChange(m_watch.position(), 0));
  EXPECT_FALSE(m_watch.waitForChange(m_watch.position(), -1));
  EXPECT_FALSE(m_watch.waitForChange(m_watch.position(), std::numeric_limits<std::int64_t>::min()));
}

TEST_F(Watch, DoesNotWaitWhileItIsClosed) {
  m_watch.close();
  EXPECT_FALSE(m_watch.waitForChange(m_watch.position(), kForever));
  PluginPosition known = m_watch.position();
  --known.revision;
  EXPECT_TRUE(m_watch.waitForChange(known, kForever)) << "what differs, differs";
  ChangeWatch neverOpened;
  EXPECT_FALSE(neverOpened.waitForChange(neverOpened.position(), kForever));
}

TEST_F(Watch, WakesForARevision) {
  std::thread waiting = waiter(m_watch.position(), true);
  waitForWaiters(1);
  m_watch.raise(SnapshotDifference::kProgress);
  waiting.join();
}

TEST_F(Watch, WakesForEventsThatFollowARevision) {
  std::thread first = waiter(m_watch.position(), true);
  m_watch.raise(SnapshotDifference::kProgress);
  first.join();
  std::thread second = waiter(m_watch.position(), true);
  waitForWaiters(1);
  recordAnEvent();
  m_watch.announceEvents();
  second.join();
}

TEST_F(Watch, WakesForTheEventsOfAnotherSessionOfTheModule) {
  std::thread waiting = waiter(m_watch.position(), true);
  waitForWaiters(1);
  recordAnEvent();
  ChangeWatch().announceEvents();
  waiting.join();
}

TEST_F(Watch, SleepsOnWhenNothingIsNew) {
  std::thread waiting = waiter(m_watch.position(), true);
  waitForWaiters(1);
  for (int turn = 0; turn < 100; ++turn) {
    m_watch.announceEvents();
    m_watch.raise(SnapshotDifference::kNone);
    EXPECT_EQ(m_left, 0);
  }
  m_watch.raise(SnapshotDifference::kProgress);
  waiting.join();
}

TEST_F(Watch, IsOfNoConcernToAnInterruptionByTheHost) {
  boost::thread host([this] {
    EXPECT_FALSE(m_watch.waitForChange(m_watch.position(), kShort));
    EXPECT_THROW(boost::this_thread::interruption_point(), boost::thread_interrupted);
  });
  host.interrupt();
  host.join();
}

// The end

TEST_F(Watch, IsClosedOnlyWhenAHundredWaitersHaveLeft) {
  for (int life = 0; life < 2; ++life) {
    std::vector<std::thread> waiters;
    for (int i = 0; i < 100; ++i) waiters.push_back(waiter(m_watch.position(), false));
    waitForWaiters(100);
    m_watch.close();
    EXPECT_EQ(m_watch.waiters(), 0u);
    for (std::thread& waiting : waiters) waiting.join();
    m_watch.open();
    EXPECT_FALSE(m_watch.waitForChange(m_watch.position(), 1)) << "waiting goes on";
  }
}

TEST_F(Watch, MayGoAsSoonAsItIsClosed) {
  auto watch = std::make_unique<ChangeWatch>();
  watch->open();
  std::vector<std::thread> waiters;
  for (int i = 0; i < 10; ++i) {
    waiters.emplace_back([&raw = *watch] { EXPECT_FALSE(raw.waitForChange(raw.position(), kForever)); });
  }
  while (watch->waiters() != 10) std::this_thread::yield();
  watch.reset();
  for (std::thread& waiting : waiters) waiting.join();
}

TEST_F(Watch, LosesNoneOfManyWaitersBesideManyRevisions) {
  constexpr int kRevisions = 2000;
  const std::uint64_t last = m_watch.position().revision + kRevisions;
  std::vector<std::thread> waiters;
  for (int i = 0; i < 8; ++i) {
    waiters.emplace_back([this, last] {
      PluginPosition known = m_watch.position();
      while (known.revision < last) {
        ASSERT_TRUE(m_watch.waitForChange(known, kForever));
        const PluginPosition now = m_watch.position();
        ASSERT_GE(now.revision, known.revision);
        ASSERT_GE(now.structure, known.structure);
        ASSERT_GE(now.sequence, known.sequence);
        known = now;
      }
    });
  }
  for (int i = 0; i < kRevisions; ++i) {
    m_watch.raise(i % 2 == 0 ? SnapshotDifference::kProgress : SnapshotDifference::kStructure);
    if (i % 10 == 0) recordAnEvent();
    m_watch.announceEvents();
  }
  for (std::thread& waiting : waiters) waiting.join();
}

}  // namespace
