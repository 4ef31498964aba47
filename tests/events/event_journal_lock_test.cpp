#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/thread/lock_types.hpp>
#include <chrono>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "event_journal.h"
#include "events/sample_objects.h"

namespace {

using testing::ElementsAre;

/// A journal that tells how its lock is held whenever it looks at its clock.
class WatchedJournal : public EventJournal {
 public:
  WatchedJournal()
      : EventJournal([this] {
          heldAtClock.push_back(held());
          return m_now++;
        }) {}

  /// "none", "shared" or "exclusive", as another thread sees it.
  std::string held() {
    std::string held = "none";
    std::thread([this, &held] {
      if (!boost::shared_lock<boost::shared_mutex>(m_mutex, boost::try_to_lock)) {
        held = "exclusive";
      } else if (!boost::unique_lock<boost::shared_mutex>(m_mutex, boost::try_to_lock)) {
        held = "shared";
      }
    }).join();
    return held;
  }

  boost::unique_lock<boost::shared_mutex> taken() { return boost::unique_lock<boost::shared_mutex>(m_mutex); }

  std::vector<std::string> heldAtClock;

 private:
  std::int64_t m_now = 0;
};

/// An event that tells how the lock is held when it is told in short.
class WatchedEvent : public mirn_events::volume_event {
 public:
  explicit WatchedEvent(WatchedJournal& journal)
      : volume_event(EventSeverity::INFO, VolumeEventType::VOLUME_ADDED, sampleVolume(L"1")),
        m_journal(journal) {}

  EventSummary summary() const override {
    heldAtSummary.push_back(m_journal.held());
    return volume_event::summary();
  }

  mutable std::vector<std::string> heldAtSummary;

 private:
  WatchedJournal& m_journal;
};

TEST(JournalLock, IsHeldAloneWhileAnEventIsStamped) {
  WatchedJournal journal;
  journal.add(std::make_shared<WatchedEvent>(journal));
  EXPECT_THAT(journal.heldAtClock, ElementsAre("exclusive"));
  EXPECT_EQ(journal.held(), "none") << "afterwards";
}

TEST(JournalLock, IsNotHeldYetWhileAnEventIsToldInShort) {
  WatchedJournal journal;
  const auto event = std::make_shared<WatchedEvent>(journal);
  journal.add(event);
  EXPECT_THAT(event->heldAtSummary, ElementsAre("none"));
}

TEST(JournalLock, IsNotHeldYetWhenAReaderLooksAtTheClock) {
  WatchedJournal journal;
  journal.getRecent(3600);
  EXPECT_THAT(journal.heldAtClock, ElementsAre("none"));
  EXPECT_EQ(journal.held(), "none") << "afterwards";
}

/// Waits for a use of a journal whose lock another one holds.
bool endsBesideTheLock(const std::function<void(WatchedJournal&)>& use) {
  WatchedJournal journal;
  auto lock = journal.taken();
  std::future<void> user = std::async(std::launch::async, [&] { use(journal); });
  const bool ended = user.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
  lock.unlock();
  user.get();
  return ended;
}

TEST(JournalLock, IsNotWaitedForToIgnoreANullPointer) {
  EXPECT_TRUE(endsBesideTheLock([](WatchedJournal& journal) { journal.add(nullptr); }));
}

TEST(JournalLock, IsNotWaitedForToTellTheLastNumber) {
  EXPECT_TRUE(endsBesideTheLock([](WatchedJournal& journal) { journal.sequence(); }));
}

}  // namespace
