#include "notifications/notifier.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace host {

namespace {

using insight::AlarmStep;
using insight::Severity;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::chrono::seconds kPatience{30};

/// What a test and the threads of a notifier have in common.
class Shared {
 public:
  template <class Change>
  void with(const Change& change) {
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      change();
    }
    m_changed.notify_all();
  }

  template <class Condition>
  bool await(const Condition& condition) {
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, kPatience, condition);
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
};

/// A receiver that takes, refuses or hangs as it is told.
struct Receiver {
  std::vector<std::string> told;  ///< "EVENT ALARM ID" of each try.
  std::string failure;
  bool hangs = false;
  bool isHanging = false;
  bool isStopped = false;
  bool isRetried = true;
};

class FakeTarget final : public INotificationTarget {
 public:
  FakeTarget(Shared& shared, Receiver& receiver, std::string name)
      : m_shared(shared), m_receiver(receiver), m_name(std::move(name)) {}

  const std::string& name() const override { return m_name; }
  bool isRetried() const override { return m_receiver.isRetried; }

  std::string tell(const Delivery& delivery) override {
    std::string failure;
    m_shared.with([&] {
      m_receiver.told.push_back(delivery.event + ' ' + delivery.alarm + ' ' + delivery.id);
      m_receiver.isHanging = m_receiver.hangs;
      failure = m_receiver.failure;
    });
    if (m_receiver.isHanging) {
      m_shared.await([&] { return m_receiver.isStopped; });
      return "broken off";
    }
    return failure;
  }

  void stop() override {
    m_shared.with([&] { m_receiver.isStopped = true; });
  }

 private:
  Shared& m_shared;
  Receiver& m_receiver;
  const std::string m_name;
};

class NotifierTest : public testing::Test {
 protected:
  NotifierTest() {
    Notifier::Targets targets;
    targets.push_back(std::make_unique<FakeTarget>(m_shared, m_first, "first"));
    targets.push_back(std::make_unique<FakeTarget>(m_shared, m_second, "second"));
    Notifier::Settings settings;
    settings.hostName = "server1";
    settings.clock = [this] { return DeliveryQueue::Moment(std::chrono::seconds(m_seconds.load())); };
    settings.queue.most = 6;
    m_notifier = std::make_unique<Notifier>(std::move(targets), std::move(settings));
  }

  void start() {
    m_notifier->start([this](const insight::ServiceNote& note) {
      m_shared.with([&] {
        m_notes.push_back(note.operation + ' ' + note.outcome + ": " +
                          std::string(note.details.at("target").as_string()) + ": " +
                          std::string(note.details.at("reason").as_string()) + ": " +
                          std::to_string(note.details.at("deliveries").as_array().size()));
      });
    });
  }

  static insight::Alarm alarmOf(const std::wstring& disk) {
    insight::Alarm alarm;
    alarm.cause.kind = "disk-failed";
    alarm.cause.object = {"disk", disk, L"Disk"};
    return alarm;
  }

  void raise(const std::wstring& disk) { m_notifier->hear({AlarmStep::kRaised, alarmOf(disk)}); }

  void pass(std::int64_t seconds) {
    m_seconds += seconds;
    m_notifier->wake();
  }

  bool awaitTold(const Receiver& receiver, std::size_t count) {
    return m_shared.await([&] { return receiver.told.size() >= count; });
  }

  /// The try has come to its end, and the next one is later.
  bool awaitPause(std::size_t target) {
    return poll([&] {
      const auto turn = m_notifier->nextTurn(target);
      return turn && *turn > DeliveryQueue::Moment(std::chrono::seconds(m_seconds.load()));
    });
  }
  bool awaitAllTaken(std::size_t target) {
    return poll([&] { return !m_notifier->nextTurn(target); });
  }

  template <class Condition>
  static bool poll(const Condition& condition) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      std::this_thread::yield();
    }
    return true;
  }

  /// Without the ids.
  static std::vector<std::string> storyOf(const Receiver& receiver) {
    std::vector<std::string> story;
    for (const std::string& each : receiver.told) story.push_back(each.substr(0, each.rfind(' ')));
    return story;
  }

  Shared m_shared;
  Receiver m_first;
  Receiver m_second;
  std::vector<std::string> m_notes;
  std::atomic<std::int64_t> m_seconds{1'000'000};
  std::unique_ptr<Notifier> m_notifier;
};

TEST_F(NotifierTest, TellsEveryTarget) {
  start();
  raise(L"D1");
  m_notifier->hear({AlarmStep::kChanged, alarmOf(L"D1"), true});
  m_notifier->hear({AlarmStep::kCleared, alarmOf(L"D1")});
  for (const Receiver* const receiver : {&m_first, &m_second}) {
    ASSERT_TRUE(awaitTold(*receiver, 3));
    EXPECT_THAT(storyOf(*receiver),
                ElementsAre("raised disk-failed-D1", "worsened disk-failed-D1", "cleared disk-failed-D1"));
  }
  m_notifier->stop();
  EXPECT_THAT(m_notes, IsEmpty());
}

TEST_F(NotifierTest, TellsAnewOfWhatWasOpenBefore) {
  m_notifier->recall({alarmOf(L"D1")});
  start();
  ASSERT_TRUE(awaitTold(m_first, 1));
  EXPECT_THAT(storyOf(m_first), ElementsAre("open disk-failed-D1"));
}

TEST_F(NotifierTest, TriesAgainWithTheSameIdAndTellsOthersMeanwhile) {
  m_first.failure = "it is full";
  start();
  raise(L"D1");
  ASSERT_TRUE(awaitPause(0));
  ASSERT_TRUE(awaitAllTaken(1));
  m_shared.with([&] { m_first.failure.clear(); });
  pass(1);
  ASSERT_TRUE(awaitTold(m_first, 2));
  EXPECT_EQ(m_first.told[0], m_first.told[1]);
  EXPECT_NE(m_first.told[0], m_second.told[0]);
}

TEST_F(NotifierTest, AFailureIsACauseAfterAMinuteAndUntilItEnds) {
  m_first.failure = "it is full";
  start();
  EXPECT_FALSE(m_notifier->cause());
  raise(L"D1");
  for (const int pause : {1, 2, 4, 8, 16, 28}) {  // 59 s
    ASSERT_TRUE(awaitPause(0));
    EXPECT_FALSE(m_notifier->cause());
    pass(pause);
  }
  EXPECT_FALSE(m_notifier->cause());
  pass(1);
  const auto cause = m_notifier->cause();
  ASSERT_TRUE(cause);
  EXPECT_EQ(cause->id(), "notification");
  EXPECT_EQ(cause->severity, Severity::kWarning);
  EXPECT_EQ(cause->text, "Alarms are not told: first: it is full.");
  m_shared.with([&] { m_first.failure.clear(); });
  pass(3);
  ASSERT_TRUE(awaitAllTaken(0));
  EXPECT_FALSE(m_notifier->cause());
}

TEST_F(NotifierTest, WhatFailsForADayIsDroppedAndTold) {
  m_first.failure = "it is full";
  start();
  raise(L"D1");
  ASSERT_TRUE(awaitPause(0));
  ASSERT_TRUE(awaitAllTaken(1));
  pass(86400);
  ASSERT_TRUE(m_shared.await([&] { return !m_notes.empty(); }));
  EXPECT_THAT(m_notes, ElementsAre("notification dropped: first: it was tried for too long: it is full: 1"));
}

TEST_F(NotifierTest, WhatIsTooMuchIsDroppedAndTold) {
  m_first.failure = m_second.failure = "it is full";
  start();
  raise(L"D1");
  ASSERT_TRUE(awaitPause(0));
  ASSERT_TRUE(awaitPause(1));
  for (const wchar_t* const disk : {L"D2", L"D3", L"D4"}) raise(disk);
  EXPECT_THAT(m_notes, ElementsAre("notification dropped: first: too much waits: 1",
                                   "notification dropped: second: too much waits: 1"));
}

TEST_F(NotifierTest, WhatIsNotTriedAgainIsTold) {
  m_first.isRetried = false;
  m_first.failure = "it ended with the status 1";
  start();
  raise(L"D1");
  ASSERT_TRUE(m_shared.await([&] { return !m_notes.empty(); }));
  EXPECT_THAT(m_notes, ElementsAre("notification failed: first: it ended with the status 1: 1"));
  pass(86400);
  raise(L"D2");
  ASSERT_TRUE(awaitTold(m_first, 2));
  EXPECT_THAT(storyOf(m_first), ElementsAre("raised disk-failed-D1", "raised disk-failed-D2"));
}

TEST_F(NotifierTest, StopsWhateverTargetsDoAndTellsWhatWaits) {
  m_first.hangs = true;
  m_second.failure = "it is full";
  start();
  raise(L"D1");
  ASSERT_TRUE(m_shared.await([&] { return m_first.isHanging; }));
  ASSERT_TRUE(awaitPause(1));
  m_notifier->hear({AlarmStep::kCleared, alarmOf(L"D1")});
  m_notifier->stop();
  EXPECT_THAT(m_notes, ElementsAre("notification dropped: first: the host stops: 2",
                                   "notification dropped: second: the host stops: 2"));
  raise(L"D2");
  EXPECT_EQ(m_notes.size(), 4U);
  EXPECT_FALSE(m_notifier->cause());
}

}  // namespace

}  // namespace host
