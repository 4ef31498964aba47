#ifndef MIRN_HOST_NOTIFICATIONS_ALARM_NEWS_H
#define MIRN_HOST_NOTIFICATIONS_ALARM_NEWS_H

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "alarms/alarm_tracker.h"
#include "health/severity.h"

namespace host {

/// The kind of the cause that a target fails: nobody is told of it, since that might fail in turn.
constexpr char kNotificationKind[] = "notification";

/// What is told of an alarm. Plain value.
struct AlarmNews {
  std::string event;  ///< "raised", "worsened", "cleared" or "open".
  insight::Alarm alarm;
};

/// Decides which changes of alarms are told: those that were raised or have become worse, where they are bad
/// enough, and that they have cleared, where that they were there was told. One thread at a time.
class AlarmJudge {
 public:
  explicit AlarmJudge(insight::Severity least) : m_least(least) {}

  /// Of an alarm that was open before this process began.
  std::optional<AlarmNews> recall(const insight::Alarm& alarm);
  std::optional<AlarmNews> judge(const insight::AlarmChange& change);

 private:
  bool isTold(const insight::Alarm& alarm) const;

  const insight::Severity m_least;
  std::set<std::string> m_told;  ///< Ids of alarms that are told of as being there.
};

/// JSON: what a receiver gets.
std::string bodyOf(const AlarmNews& news, const std::string& delivery, const std::string& host,
                   std::int64_t nowMs);

}  // namespace host

#endif
