#include "notifications/alarm_news.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace host {

namespace {

using insight::AlarmStep;
using insight::Severity;

insight::Alarm alarmOf(const std::string& kind, Severity severity) {
  insight::Alarm alarm;
  alarm.cause.kind = kind;
  alarm.cause.severity = severity;
  alarm.cause.object = {"disk", L"D1", L"Disk 1"};
  alarm.cause.text = "Something is wrong.";
  alarm.sinceMs = 1'700'000'000'000;
  return alarm;
}

class AlarmJudgeTest : public testing::Test {
 protected:
  /// The event that is told; "-" where none is.
  std::string judged(AlarmStep step, Severity severity, bool isWorse = false,
                     const std::string& kind = "disk-failed") {
    const auto news = m_judge.judge({step, alarmOf(kind, severity), isWorse});
    return news ? news->event : "-";
  }

  AlarmJudge m_judge{Severity::kWarning};
};

TEST_F(AlarmJudgeTest, TellsOfOneThatIsBadEnough) {
  EXPECT_EQ(judged(AlarmStep::kRaised, Severity::kInfo), "-");
  EXPECT_EQ(judged(AlarmStep::kCleared, Severity::kInfo), "-");
  EXPECT_EQ(judged(AlarmStep::kRaised, Severity::kWarning), "raised");
  EXPECT_EQ(judged(AlarmStep::kCleared, Severity::kWarning), "cleared");
  EXPECT_EQ(judged(AlarmStep::kCleared, Severity::kWarning), "-");
}

TEST_F(AlarmJudgeTest, TellsOfOneThatBecomesWorseAndNotBetter) {
  EXPECT_EQ(judged(AlarmStep::kRaised, Severity::kWarning), "raised");
  EXPECT_EQ(judged(AlarmStep::kChanged, Severity::kCritical, true), "worsened");
  EXPECT_EQ(judged(AlarmStep::kChanged, Severity::kInfo), "-");
  EXPECT_EQ(judged(AlarmStep::kCleared, Severity::kInfo), "cleared");  // its receivers know of it
}

TEST_F(AlarmJudgeTest, TellsOfOneThatBecomesBadEnough) {
  EXPECT_EQ(judged(AlarmStep::kRaised, Severity::kInfo), "-");
  EXPECT_EQ(judged(AlarmStep::kChanged, Severity::kWarning, true), "worsened");
  EXPECT_EQ(judged(AlarmStep::kCleared, Severity::kWarning), "cleared");
}

TEST_F(AlarmJudgeTest, TellsNobodyWhoTookNotice) {
  EXPECT_EQ(judged(AlarmStep::kAcknowledged, Severity::kCritical), "-");
}

TEST_F(AlarmJudgeTest, TellsAnewOfWhatWasOpenBefore) {
  const auto news = m_judge.recall(alarmOf("disk-failed", Severity::kWarning));
  ASSERT_TRUE(news);
  EXPECT_EQ(news->event, "open");
  EXPECT_FALSE(m_judge.recall(alarmOf("disk-locked", Severity::kInfo)));
  EXPECT_EQ(judged(AlarmStep::kCleared, Severity::kWarning), "cleared");
}

TEST_F(AlarmJudgeTest, TellsNotOfNotificationsThatFail) {
  EXPECT_EQ(judged(AlarmStep::kRaised, Severity::kWarning, false, "notification"), "-");
  EXPECT_EQ(judged(AlarmStep::kCleared, Severity::kWarning, false, "notification"), "-");
  EXPECT_FALSE(m_judge.recall(alarmOf("notification", Severity::kWarning)));
}

TEST(AlarmNews, IsTheAlarmAndWhatHappened) {
  const insight::Alarm alarm = alarmOf("disk-failed", Severity::kWarning);
  const auto body =
      boost::json::parse(bodyOf({"raised", alarm}, "ID", "server1", 1'700'000'000'123)).as_object();
  EXPECT_EQ(body.at("event").as_string(), "raised");
  EXPECT_EQ(body.at("delivery").as_string(), "ID");
  EXPECT_EQ(body.at("host").as_string(), "server1");
  EXPECT_EQ(body.at("at").as_string(), "2023-11-14T22:13:20.123Z");
  EXPECT_EQ(body.at("alarm").as_object(), formOf(alarm));
  EXPECT_EQ(body.size(), 5U);
}

}  // namespace

}  // namespace host
