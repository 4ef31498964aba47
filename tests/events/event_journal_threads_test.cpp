#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include "event_journal.h"
#include "events/sample_objects.h"

namespace {

constexpr auto kForever = ~std::uint64_t{0};

EventJournal::Event someEvent() {
  return std::make_shared<mirn_events::volume_event>(EventSeverity::INFO, VolumeEventType::VOLUME_ADDED,
                                                     sampleVolume(L"1"));
}

TEST(JournalThreads, AddEventsOneByOneWhileOthersRead) {
  std::atomic<std::int64_t> now{0};
  EventJournal journal([&now] { return ++now; });
  std::atomic<bool> writing{true};

  std::vector<std::thread> readers;
  for (int reader = 0; reader < 2; ++reader) {
    readers.emplace_back([&] {
      while (writing) {
        const auto events = journal.getRecent(kForever);
        ASSERT_LE(events.size(), 1000u);
        for (std::size_t event = 1; event < events.size(); ++event) {
          ASSERT_GT(events[event - 1]->creationTime(), events[event]->creationTime());
        }
        for (const auto& event : events) ASSERT_EQ(event->getTypeName(), L"VOLUME_ADDED");
      }
    });
  }
  std::vector<std::thread> writers;
  for (int writer = 0; writer < 3; ++writer) {
    writers.emplace_back([&journal] {
      for (int event = 0; event < 500; ++event) journal.add(someEvent());
    });
  }
  for (auto& writer : writers) writer.join();
  writing = false;
  for (auto& reader : readers) reader.join();

  EXPECT_EQ(journal.getRecent(kForever).size(), 1000u);
}

TEST(JournalThreads, FindTheOneJournalAtItsFirstUse) {
  std::vector<EventJournal*> found(4);
  std::vector<std::thread> users;
  for (auto& journal : found) {
    users.emplace_back([&journal] {
      journal = &EventJournal::instance();
      journal->add(someEvent());
    });
  }
  for (auto& user : users) user.join();
  EXPECT_EQ(std::set<EventJournal*>(found.begin(), found.end()).size(), 1u);
  EXPECT_GE(found.front()->getRecent(kForever).size(), found.size());
}

}  // namespace
