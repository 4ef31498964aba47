#include "service/insight_service.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "history/history_query.h"
#include "insight/service/scripted_plugin.h"
#include "support/temporary_folder.h"

namespace insight {
namespace {

using ovra::data_transfer::ServiceObject;
using testing::ElementsAre;

constexpr std::int64_t kStart = 1'700'000'000'000;
constexpr std::int64_t kSecond = 1000;

/// What an operation tells of the work that it may begin, or stop.
ServiceObject describedRebuild() {
  ServiceObject description;
  ServiceObject& route = description.member(L"routes").at(0);
  route.member(L"id") = std::wstring(L"rebuildVolume");
  route.member(L"work").at(0).member(L"kind") = std::wstring(L"rebuild");
  return description;
}

ScriptedPlugin::Machine sound(std::int64_t takenAt) {
  ScriptedPlugin::Machine machine;
  machine.takenAt = takenAt;
  return machine;
}

ScriptedPlugin::Machine degraded(std::int64_t takenAt) {
  ScriptedPlugin::Machine machine = sound(takenAt);
  machine.volumeState = L"DEGRADED";
  machine.diskState = L"FAILED";
  return machine;
}

ScriptedPlugin::Machine rebuilding(std::int64_t takenAt, std::uint64_t percent) {
  ScriptedPlugin::Machine machine = degraded(takenAt);
  machine.diskState = L"NORMAL";
  machine.volumeState = L"REBUILDING";
  machine.work = L"REBUILDING";
  machine.percent = percent;
  return machine;
}

ClientChange rebuildByAda() {
  ClientChange change;
  change.actor = "ada";
  change.operation = "rebuildVolume";
  change.object = {"volume", L"V", L""};
  change.details = {{"client", "127.0.0.1"}};
  return change;
}

/// Writes down what it hears.
class Ear : public IAlarmListener {
 public:
  void recall(const std::vector<Alarm>& open) override {
    for (const Alarm& alarm : open) m_heard.push_back("open " + alarm.id());
  }
  void hear(const AlarmChange& change) override {
    m_heard.push_back(std::string(wordOf(change.step)) + (change.isWorse ? " worse " : " ") +
                      change.alarm.id());
  }
  std::optional<Cause> cause() const override { return m_cause; }

  std::vector<std::string> m_heard;
  std::optional<Cause> m_cause;
};

class Insight : public testing::Test {
 protected:
  Insight() { m_plugin.become(sound(kStart)); }

  void open() {
    m_views = std::make_unique<MachineViewSource>(m_plugin);
    m_service = std::make_unique<InsightService>(
        m_plugin, *m_views, describedRebuild(),
        InsightService::Settings{(m_folder / "history.db").native(), [this] { return m_now; }});
  }
  /// As after a new start of the process.
  void reopen() {
    m_service.reset();
    open();
  }

  void lookAt(const ScriptedPlugin::Machine& machine) {
    m_plugin.become(machine);
    m_service->look();
  }

  /// "KIND OPERATION OUTCOME", oldest first.
  std::vector<std::string> story() {
    m_service->history().addAndWait({}, std::chrono::seconds(10));
    std::vector<std::string> story;
    for (const Entry& entry : m_service->history().entriesAfter(0, 100)) {
      story.push_back(entry.kind + ' ' + entry.operation + ' ' + entry.outcome);
    }
    return story;
  }

  Entry entryNumber(std::size_t row) {
    m_service->history().addAndWait({}, std::chrono::seconds(10));
    return m_service->history().entriesAfter(static_cast<std::int64_t>(row) - 1, 1).at(0);
  }

  TemporaryFolder m_folder;
  std::int64_t m_now = kStart;
  ScriptedPlugin m_plugin;
  std::unique_ptr<MachineViewSource> m_views;
  std::unique_ptr<InsightService> m_service;
};

TEST_F(Insight, TellsAListenerOfAlarmsAndOfThoseFromBefore) {
  open();
  const auto ear = std::make_shared<Ear>();
  m_service->tellAlarmsTo(ear);
  lookAt(degraded(kStart));
  EXPECT_THAT(ear->m_heard, ElementsAre("raised volume-degraded-V", "raised disk-failed-D2"));
  m_service->acknowledge("disk-failed-D2", "ada");
  m_service->look();
  EXPECT_EQ(ear->m_heard.size(), 2U);

  reopen();
  const auto next = std::make_shared<Ear>();
  m_service->tellAlarmsTo(next);
  lookAt(sound(kStart));
  EXPECT_THAT(next->m_heard, ElementsAre("open disk-failed-D2", "open volume-degraded-V",
                                         "cleared disk-failed-D2", "cleared volume-degraded-V"));
}

TEST_F(Insight, AListenerThatCannotDoItsWorkIsACause) {
  open();
  const auto ear = std::make_shared<Ear>();
  m_service->tellAlarmsTo(ear);
  m_service->look();
  EXPECT_TRUE(m_service->health().causes.empty());
  ear->m_cause.emplace();
  ear->m_cause->kind = "notification";
  ear->m_cause->object = {"service", L"", L"notifications"};
  m_service->look();
  ASSERT_EQ(m_service->health().causes.size(), 1U);
  EXPECT_EQ(m_service->health().causes[0].id(), "notification");
  ear->m_cause.reset();
  m_service->look();
  EXPECT_THAT(ear->m_heard, ElementsAre("raised notification", "cleared notification"));
  EXPECT_THAT(story(), ElementsAre("alarm notification raised", "alarm notification cleared"));
}

TEST_F(Insight, KeepsWhatBefellTheService) {
  open();
  m_service->note(
      {Severity::kWarning, {"service", L"", L"notifications"}, "notification", "dropped", {{"count", 1}}});
  EXPECT_THAT(story(), ElementsAre("service notification dropped"));
  const Entry entry = entryNumber(1);
  EXPECT_EQ(entry.severity, Severity::kWarning);
  EXPECT_EQ(entry.object.name, L"notifications");
  EXPECT_EQ(entry.atMs, kStart);
  EXPECT_EQ(entry.body.at("count").as_int64(), 1);
}

TEST_F(Insight, RaisesAnAlarmForEachCauseAndClearsItWithTheCause) {
  open();
  m_service->look();
  EXPECT_TRUE(m_service->findings()->alarms.empty());

  lookAt(degraded(kStart));
  std::vector<std::string> open;
  for (const Alarm& alarm : m_service->findings()->alarms) open.push_back(alarm.id());
  EXPECT_THAT(open, ElementsAre("disk-failed-D2", "volume-degraded-V"));

  lookAt(sound(kStart));
  EXPECT_TRUE(m_service->findings()->alarms.empty());
  EXPECT_THAT(story(), ElementsAre("alarm volume-degraded raised", "alarm disk-failed raised",
                                   "alarm disk-failed cleared", "alarm volume-degraded cleared"));
}

TEST_F(Insight, TellsThePositionOfWhatItFound) {
  open();
  lookAt(degraded(kStart));
  EXPECT_EQ(m_service->findings()->position.revision, m_plugin.position().revision);
}

TEST_F(Insight, MakesAJobOfWorkAndTellsWhoBeganIt) {
  open();
  lookAt(degraded(kStart));
  const std::uint64_t number = m_service->beginChange(rebuildByAda());
  m_now += kSecond;
  lookAt(rebuilding(kStart, 0));
  m_service->endChange(number, rebuildByAda(), true, {{"status", 204}});

  ASSERT_EQ(m_service->findings()->jobs.size(), 1U);
  const Job& job = m_service->findings()->jobs.front();
  EXPECT_EQ(job.kind, "rebuild");
  EXPECT_EQ(job.actor, "ada");
  EXPECT_EQ(job.startMs, m_now);
}

TEST_F(Insight, KeepsOnlyTheEndsOfAJobAsEntries) {
  open();
  m_service->look();
  lookAt(rebuilding(kStart, 0));
  lookAt(rebuilding(kStart, 50));
  lookAt(rebuilding(kStart, 99));
  lookAt(sound(kStart));

  EXPECT_THAT(story(), ElementsAre("job rebuild begun", "alarm volume-degraded raised",
                                   "job rebuild completed", "alarm volume-degraded cleared"));
  EXPECT_TRUE(m_service->findings()->jobs.empty());
}

TEST_F(Insight, CountsTheJobsThatEnded) {
  open();
  m_service->look();
  EXPECT_TRUE(m_service->findings()->endedJobs.empty());
  for (int time = 0; time < 2; ++time) {
    lookAt(rebuilding(kStart, 99));
    lookAt(sound(kStart));
  }
  EXPECT_EQ(m_service->findings()->endedJobs, (EndedJobs{{{"rebuild", "completed"}, 2}}));
}

TEST_F(Insight, CountsEachFailureOfAPictureOnce) {
  open();
  m_service->look();
  ScriptedPlugin::Machine machine = sound(kStart);
  machine.failedAt = kStart + kSecond;
  lookAt(machine);
  lookAt(machine);
  EXPECT_EQ(m_service->findings()->failedPictures, 1U);
  machine.failedAt += kSecond;
  lookAt(machine);
  lookAt(sound(kStart));
  EXPECT_EQ(m_service->findings()->failedPictures, 2U);
}

TEST_F(Insight, KeepsTheMachineOfTheLook) {
  open();
  EXPECT_EQ(m_service->findings()->machine, nullptr);
  lookAt(degraded(kStart));
  ASSERT_NE(m_service->findings()->machine, nullptr);
  EXPECT_EQ(m_service->findings()->machine->position.revision, m_service->findings()->position.revision);
}

TEST_F(Insight, KeepsAChangeBeforeItIsTriedAndHowItWent) {
  open();
  m_service->look();
  const std::uint64_t number = m_service->beginChange(rebuildByAda());
  EXPECT_THAT(story(), ElementsAre("audit rebuildVolume begun"));
  m_service->endChange(number, rebuildByAda(), false, {{"status", 409}, {"reason", "No."}});
  EXPECT_THAT(story(), ElementsAre("audit rebuildVolume begun", "audit rebuildVolume refused"));

  const Entry end = entryNumber(2);
  EXPECT_EQ(end.actor, "ada");
  EXPECT_EQ(end.object, (ObjectRef{"volume", L"V", L"Data"}));
  EXPECT_EQ(end.body, (boost::json::object{{"client", "127.0.0.1"}, {"status", 409}, {"reason", "No."}}));
}

TEST_F(Insight, DoesNotKnowHowAChangeWentThatWasUnderWayAtTheEnd) {
  open();
  m_service->beginChange(rebuildByAda());
  reopen();
  EXPECT_THAT(story(), ElementsAre("audit rebuildVolume begun", "audit rebuildVolume unknown"));
  reopen();
  EXPECT_EQ(story().size(), 2U);
}

TEST_F(Insight, GoesOnWithTheAlarmsOfAnEarlierRun) {
  open();
  lookAt(degraded(kStart));
  ASSERT_TRUE(m_service->acknowledge("disk-failed-D2", "ada"));
  m_now += kSecond;
  reopen();
  m_service->look();

  ASSERT_EQ(m_service->findings()->alarms.size(), 2U);
  const Alarm& alarm = m_service->findings()->alarms.front();
  EXPECT_EQ(alarm.sinceMs, kStart);
  EXPECT_EQ(alarm.acknowledgedBy, "ada");
  EXPECT_EQ(story().size(), 3U) << "nothing is raised again";
}

TEST_F(Insight, GoesOnWithTheJobsOfAnEarlierRun) {
  open();
  m_service->look();
  lookAt(rebuilding(kStart, 10));
  const std::string id = m_service->findings()->jobs.at(0).id;
  reopen();
  lookAt(rebuilding(kStart, 20));
  ASSERT_EQ(m_service->findings()->jobs.size(), 1U);
  EXPECT_EQ(m_service->findings()->jobs.front().id, id);
}

TEST_F(Insight, EndsAJobOfAnEarlierRunWhoseEndNobodySaw) {
  open();
  m_service->look();
  lookAt(rebuilding(kStart, 10));
  reopen();
  lookAt(sound(kStart));
  EXPECT_TRUE(m_service->findings()->jobs.empty());
  EXPECT_EQ(story().at(2), "job rebuild completed");
  const auto ended = m_service->history().endedJobs("", 10);
  ASSERT_EQ(ended.size(), 1U);
  EXPECT_TRUE(jobOf(ended.front()).isEndUnseen);
}

TEST_F(Insight, DoesNotKnowWhenWorkBeganThatItFoundAtTheStart) {
  open();
  lookAt(rebuilding(kStart, 10));
  ASSERT_EQ(m_service->findings()->jobs.size(), 1U);
  EXPECT_EQ(m_service->findings()->jobs.front().startMs, std::nullopt);
  EXPECT_EQ(m_service->findings()->jobs.front().seenFromMs, kStart);
}

TEST_F(Insight, TellsThePluginsEventsOnce) {
  open();
  m_plugin.tellEvent(L"DISK_FAILED", L"ERROR");
  m_service->look();
  m_plugin.tellEvent(L"DISK_ADDED", L"INFO");
  m_service->look();
  m_service->look();

  EXPECT_THAT(story(), ElementsAre("event DISK_FAILED ", "event DISK_ADDED "));
  const Entry event = entryNumber(1);
  EXPECT_EQ(event.epoch, "0123456789abcdef");
  EXPECT_EQ(event.sequence, 1U);
  EXPECT_EQ(event.atMs, kStart + 1);
  EXPECT_EQ(event.severity, Severity::kCritical);
  EXPECT_EQ(event.object, (ObjectRef{"disk", L"D2", L"SATA S2"}));
  EXPECT_EQ(event.body, (boost::json::object{{"description", "What has happened"}}));
}

TEST_F(Insight, TellsWhichEventsItMissed) {
  open();
  for (int i = 0; i < 5; ++i) m_plugin.tellEvent(L"DISK_ADDED", L"INFO", 3);
  m_service->look();
  EXPECT_THAT(story(), ElementsAre("service events lost", "event DISK_ADDED ", "event DISK_ADDED "));
  EXPECT_EQ(entryNumber(1).body, (boost::json::object{{"count", 3}}));
}

TEST_F(Insight, KeepsAlarmsAndJobsWhileThePictureIsOld) {
  open();
  lookAt(degraded(kStart));
  ScriptedPlugin::Machine refused = sound(kStart);
  refused.failedAt = kStart + kSecond;
  lookAt(refused);
  EXPECT_EQ(m_service->findings()->alarms.size(), 3U) << "with that of the old picture";
  EXPECT_EQ(m_service->health().severity, Severity::kUnknown);
}

TEST_F(Insight, AcknowledgesAnAlarmOnce) {
  open();
  lookAt(degraded(kStart));
  EXPECT_EQ(m_service->acknowledge("volume-degraded-V", "ada")->acknowledgedBy, "ada");
  EXPECT_EQ(m_service->acknowledge("volume-degraded-V", "bob")->acknowledgedBy, "ada");
  EXPECT_FALSE(m_service->acknowledge("volume-degraded-W", "ada"));
  EXPECT_EQ(m_service->findings()->alarms.back().acknowledgedBy, "ada");
  EXPECT_EQ(story().back(), "alarm volume-degraded acknowledged");
  EXPECT_EQ(story().size(), 3U);
  EXPECT_EQ(entryNumber(3).actor, "ada");
}

TEST_F(Insight, WatchesByItself) {
  open();
  m_service->start();
  std::mutex mutex;
  std::condition_variable woken;
  const auto listener = m_service->stream().listen("", false, [&] { woken.notify_all(); });
  m_plugin.become(degraded(kStart));

  std::string heard;
  std::unique_lock<std::mutex> lock(mutex);
  for (int i = 0; i < 1000 && heard.find("volume-degraded") == std::string::npos; ++i) {
    heard += listener->take(0);
    woken.wait_for(lock, std::chrono::milliseconds(10));
  }
  EXPECT_NE(heard.find("volume-degraded"), std::string::npos);
}

TEST_F(Insight, GoesOnWatchingWhenThePluginCouldNotTell) {
  m_plugin.failToTell(true);
  open();
  m_service->start();
  m_plugin.failToTell(false);
  m_plugin.become(degraded(kStart));
  for (int i = 0; i < 2000 && m_service->findings()->alarms.empty(); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  EXPECT_FALSE(m_service->findings()->alarms.empty());
}

TEST_F(Insight, EndsItsListenersWithAWord) {
  open();
  const auto listener = m_service->stream().listen("", false, [] {});
  m_service->announceStop();
  EXPECT_NE(listener->take(0).find("event: bye"), std::string::npos);
  EXPECT_TRUE(listener->isClosed());
}

}  // namespace
}  // namespace insight
