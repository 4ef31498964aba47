#include <gtest/gtest.h>

#include <atomic>
#include <boost/thread/latch.hpp>
#include <boost/thread/thread.hpp>
#include <functional>
#include <future>
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
        const std::uint64_t sequence = journal.sequence();
        const EventRing::Part inShort = journal.getAfter(0, kForever);
        ASSERT_GE(inShort.events.size(), sequence) << "a number is there when its event is";
        for (const auto& event : inShort.events)
          ASSERT_NE(event->toServiceObject().member(L"moment").toInt64(), -1);
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
  EXPECT_EQ(journal.getAfter(0, kForever).events.size(), 1500u);
}

/// The journal while one thread is in the midst of adding an event.
class BusyJournal : public testing::TestWithParam<std::function<void(EventJournal&)>> {
 protected:
  BusyJournal() {
    m_adder = std::thread([this] { m_journal.add(someEvent()); });
    m_adding.get_future().wait();
  }

  ~BusyJournal() override {
    if (m_adder.joinable()) letGo();
  }

  void letGo() {
    m_goOn.set_value();
    m_adder.join();
  }

 private:
  std::int64_t now() {
    if (!m_held.exchange(true)) {
      m_adding.set_value();
      m_goOn.get_future().wait();
    }
    return 0;
  }

  std::atomic<bool> m_held{false};
  std::promise<void> m_adding;
  std::promise<void> m_goOn;
  std::thread m_adder;

 protected:
  EventJournal m_journal{[this] { return now(); }};
};

TEST_P(BusyJournal, IsWaitedForByAThreadThatItsHostInterrupts) {
  boost::latch begun(1);
  boost::thread host([&] {
    {
      const boost::this_thread::disable_interruption ahead;
      while (!boost::this_thread::interruption_requested()) std::this_thread::yield();
      begun.count_down();
    }
    EXPECT_NO_THROW(GetParam()(m_journal));
    EXPECT_THROW(boost::this_thread::interruption_point(), boost::thread_interrupted);
  });
  host.interrupt();
  begun.wait();
  for (int turn = 0; turn < 50; ++turn) std::this_thread::yield();
  letGo();
  host.join();
  m_journal.add(someEvent());
  EXPECT_GE(m_journal.getRecent(kForever).size(), 2u) << "the journal goes on";
}

INSTANTIATE_TEST_SUITE_P(Uses, BusyJournal,
                         testing::Values([](EventJournal& journal) { journal.add(someEvent()); },
                                         [](EventJournal& journal) { journal.getRecent(kForever); },
                                         [](EventJournal& journal) { journal.getAfter(0, kForever); }));

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
