#include "alarms/alarm_tracker.h"

#include <gmock/gmock.h>

namespace insight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t kStart = 1'700'000'000'000;

Cause causeOf(const std::string& kind, const std::wstring& id, Severity severity = Severity::kWarning) {
  Cause cause;
  cause.kind = kind;
  cause.severity = severity;
  cause.object = {id.empty() ? "service" : "disk", id, L"Name " + id};
  cause.text = "Something is wrong.";
  return cause;
}

/// "raised disk-failed-D1 1": what became of which, and how often it was raised.
std::vector<std::string> wordsOf(const std::vector<AlarmChange>& changes) {
  std::vector<std::string> words;
  for (const AlarmChange& change : changes) {
    words.push_back(std::string(wordOf(change.step)) + ' ' + change.alarm.id() + ' ' +
                    std::to_string(change.alarm.count));
  }
  return words;
}

class AlarmTrackerTest : public testing::Test {
 protected:
  std::vector<std::string> look(const std::vector<Cause>& causes, std::int64_t seconds, bool isKnown = true) {
    return wordsOf(m_tracker.look(causes, isKnown, kStart + seconds * 1000));
  }

  const Cause m_failed = causeOf("disk-failed", L"D1");
  const Cause m_smart = causeOf("disk-smart", L"D2");
  AlarmTracker m_tracker;
};

TEST_F(AlarmTrackerTest, RaisesAndClearsInPairs) {
  EXPECT_THAT(look({m_failed, m_smart}, 0), ElementsAre("raised disk-failed-D1 1", "raised disk-smart-D2 1"));
  EXPECT_THAT(look({m_failed, m_smart}, 1), IsEmpty());
  EXPECT_THAT(look({m_smart}, 2), ElementsAre("cleared disk-failed-D1 1"));
  ASSERT_THAT(m_tracker.open(), SizeIs(1));
  EXPECT_EQ(m_tracker.open().at(0).id(), "disk-smart-D2");
  EXPECT_EQ(m_tracker.open().at(0).sinceMs, kStart);
}

TEST_F(AlarmTrackerTest, OneThatIsToldTwiceIsOne) {
  EXPECT_THAT(look({m_failed, m_failed}, 0), ElementsAre("raised disk-failed-D1 1"));
}

TEST_F(AlarmTrackerTest, TellsWhetherItIsWorse) {
  const auto isWorse = [this](Severity severity) {
    const auto changes = m_tracker.look({causeOf("disk-failed", L"D1", severity)}, true, kStart);
    return changes.size() == 1 && changes[0].step == AlarmStep::kChanged && changes[0].isWorse;
  };
  look({m_failed}, 0);
  EXPECT_TRUE(isWorse(Severity::kCritical));
  EXPECT_FALSE(isWorse(Severity::kCritical));
  EXPECT_FALSE(isWorse(Severity::kInfo));
  EXPECT_TRUE(isWorse(Severity::kWarning));
}

TEST_F(AlarmTrackerTest, CountsUpWhenItComesBackSoon) {
  look({m_failed}, 0);
  look({}, 10);
  EXPECT_THAT(look({m_failed}, 70), ElementsAre("raised disk-failed-D1 2"));
  EXPECT_EQ(m_tracker.find("disk-failed-D1")->sinceMs, kStart) << "the same one goes on";
  EXPECT_FALSE(m_tracker.find("disk-failed-D1")->clearedMs);
  look({}, 80);
  EXPECT_THAT(look({m_failed}, 141), ElementsAre("raised disk-failed-D1 1"));
  EXPECT_EQ(m_tracker.find("disk-failed-D1")->sinceMs, kStart + 141'000);
}

TEST_F(AlarmTrackerTest, WhatIsUnknownNeverClears) {
  const Cause old = causeOf("picture-old", L"", Severity::kUnknown);
  look({m_failed}, 0);
  EXPECT_THAT(look({old}, 1, false), ElementsAre("raised picture-old 1"));
  EXPECT_THAT(look({}, 2, false), ElementsAre("cleared picture-old 1")) << "is of the service itself";
  EXPECT_THAT(look({}, 3), ElementsAre("cleared disk-failed-D1 1"));
}

TEST_F(AlarmTrackerTest, NothingClearsOfAnObjectInDoubt) {
  look({m_failed, m_smart}, 0);
  const Cause unknown = causeOf("disk-unknown", L"D1", Severity::kUnknown);
  EXPECT_THAT(look({unknown}, 1), ElementsAre("raised disk-unknown-D1 1", "cleared disk-smart-D2 1"));
  EXPECT_THAT(look({}, 2), ElementsAre("cleared disk-failed-D1 1", "cleared disk-unknown-D1 1"))
      << "with what hid it";
  EXPECT_THAT(m_tracker.open(), SizeIs(0));
}

TEST_F(AlarmTrackerTest, IsAcknowledgedOnceByWhomAndWhen) {
  look({m_failed}, 0);
  EXPECT_FALSE(m_tracker.acknowledge("disk-failed-D9", "first", kStart));
  const auto change = m_tracker.acknowledge("disk-failed-D1", "first", kStart + 5);
  ASSERT_TRUE(change);
  EXPECT_EQ(change->step, AlarmStep::kAcknowledged);
  EXPECT_EQ(change->alarm.acknowledgedBy, "first");
  EXPECT_EQ(change->alarm.acknowledgedMs, kStart + 5);
  EXPECT_FALSE(m_tracker.acknowledge("disk-failed-D1", "second", kStart + 6));
  EXPECT_EQ(m_tracker.find("disk-failed-D1")->acknowledgedBy, "first");
}

TEST_F(AlarmTrackerTest, WhatGetsWorseIsToBeSeenAgain) {
  look({m_failed}, 0);
  m_tracker.acknowledge("disk-failed-D1", "first", kStart);
  Cause worse = m_failed;
  worse.severity = Severity::kCritical;
  EXPECT_THAT(look({worse}, 1), ElementsAre("changed disk-failed-D1 1"));
  EXPECT_FALSE(m_tracker.find("disk-failed-D1")->acknowledgedMs);
  m_tracker.acknowledge("disk-failed-D1", "first", kStart);
  EXPECT_THAT(look({m_failed}, 2), ElementsAre("changed disk-failed-D1 1"));
  EXPECT_TRUE(m_tracker.find("disk-failed-D1")->acknowledgedMs) << "better than what was seen";
}

TEST_F(AlarmTrackerTest, GoesOnWithThoseOfAnEarlierRun) {
  Alarm open;
  open.cause = m_failed;
  open.sinceMs = kStart - 1000;
  Alarm gone;
  gone.cause = m_smart;
  AlarmTracker tracker({open, gone});
  EXPECT_THAT(wordsOf(tracker.look({m_failed}, true, kStart)), ElementsAre("cleared disk-smart-D2 1"));
  EXPECT_EQ(tracker.find("disk-failed-D1")->sinceMs, kStart - 1000);
}

TEST(AlarmForm, TellsTheCauseAndWhatBecameOfIt) {
  Alarm alarm;
  alarm.cause = causeOf("disk-failed", L"D1");
  alarm.sinceMs = kStart;
  alarm.clearedMs = kStart + 1000;
  alarm.count = 3;
  alarm.acknowledgedBy = "first";
  alarm.acknowledgedMs = kStart + 500;
  const boost::json::object form = formOf(alarm);
  EXPECT_EQ(form.at("id"), "disk-failed-D1");
  EXPECT_EQ(form.at("state"), "cleared");
  EXPECT_EQ(form.at("since"), "2023-11-14T22:13:20.000Z");
  EXPECT_EQ(form.at("cleared"), "2023-11-14T22:13:21.000Z");
  EXPECT_EQ(form.at("count"), 3);
  EXPECT_EQ(form.at("acknowledged"),
            (boost::json::object{{"by", "first"}, {"at", "2023-11-14T22:13:20.500Z"}}));
}

TEST(AlarmForm, IsReadBackFromTheHistory) {
  Alarm alarm;
  alarm.cause = causeOf("disk-failed", L"D1", Severity::kCritical);
  alarm.cause.path = {{"controller", L"C1", L"First"}, alarm.cause.object};
  alarm.cause.atRisk = {{"volume", L"V1", L"Data"}};
  alarm.sinceMs = kStart;
  alarm.count = 3;
  alarm.acknowledgedBy = "first";
  alarm.acknowledgedMs = kStart + 500;
  const LastingRecord record = recordOf(alarm);
  EXPECT_EQ(record.id, "disk-failed-D1");
  EXPECT_EQ(record.objectId, "D1");
  const Alarm read = alarmOf(record);
  EXPECT_EQ(read.id(), alarm.id());
  EXPECT_EQ(read.cause.severity, Severity::kCritical);
  EXPECT_EQ(read.cause.object, alarm.cause.object);
  EXPECT_EQ(read.cause.path, alarm.cause.path);
  EXPECT_EQ(read.cause.text, alarm.cause.text);
  EXPECT_EQ(read.cause.atRisk, alarm.cause.atRisk);
  EXPECT_EQ(read.sinceMs, kStart);
  EXPECT_EQ(read.clearedMs, std::nullopt);
  EXPECT_EQ(read.count, 3U);
  EXPECT_EQ(read.acknowledgedBy, "first");
  EXPECT_EQ(read.acknowledgedMs, alarm.acknowledgedMs);
}

TEST(AlarmForm, OneThatTheHistoryEndedHasClearedWhenNobodyKnows) {
  Alarm alarm;
  alarm.cause = causeOf("disk-failed", L"D1", Severity::kCritical);
  LastingRecord record = recordOf(alarm);
  record.toMs = kStart;
  record.body["state"] = "unknown";
  const Alarm read = alarmOf(record);
  EXPECT_EQ(formOf(read).at("state"), "cleared");
  EXPECT_EQ(formOf(read).at("cleared"), "unknown");
  EXPECT_EQ(formOf(alarmOf(recordOf(read))), formOf(read));
}

}  // namespace
}  // namespace insight
