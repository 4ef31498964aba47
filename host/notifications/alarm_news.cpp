#include "notifications/alarm_news.h"

#include <boost/json/serialize.hpp>

#include "view/object_form.h"

namespace host {

bool AlarmJudge::isTold(const insight::Alarm& alarm) const {
  return alarm.cause.kind != kNotificationKind && alarm.cause.severity >= m_least;
}

std::optional<AlarmNews> AlarmJudge::recall(const insight::Alarm& alarm) {
  if (!isTold(alarm)) return {};
  m_told.insert(alarm.id());
  return AlarmNews{"open", alarm};
}

std::optional<AlarmNews> AlarmJudge::judge(const insight::AlarmChange& change) {
  const insight::Alarm& alarm = change.alarm;
  if (change.step == insight::AlarmStep::kCleared) {
    if (m_told.erase(alarm.id()) == 0) return {};
    return AlarmNews{"cleared", alarm};
  }
  const bool isRaised = change.step == insight::AlarmStep::kRaised;
  if (!isRaised && !change.isWorse) return {};
  if (!isTold(alarm)) return {};
  m_told.insert(alarm.id());
  return AlarmNews{isRaised ? "raised" : "worsened", alarm};
}

std::string bodyOf(const AlarmNews& news, const std::string& delivery, const std::string& host,
                   std::int64_t nowMs) {
  boost::json::object body;
  body["event"] = news.event;
  body["host"] = host;
  body["at"] = insight::timeForm(static_cast<std::uint64_t>(nowMs));
  body["delivery"] = delivery;
  body["alarm"] = formOf(news.alarm);
  return boost::json::serialize(body);
}

}  // namespace host
