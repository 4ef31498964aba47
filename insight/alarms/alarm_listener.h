#ifndef MIRN_INSIGHT_ALARMS_ALARM_LISTENER_H
#define MIRN_INSIGHT_ALARMS_ALARM_LISTENER_H

#include <optional>
#include <vector>

#include "alarms/alarm_tracker.h"

namespace insight {

/// Who hears of alarms as they change. One thread at a time calls `recall` and `hear`, any thread `cause`;
/// all come back at once, and raise nothing.
class IAlarmListener {
 public:
  virtual ~IAlarmListener() = default;

  /// These were open when an earlier process ended. Ahead of all that is heard.
  virtual void recall(const std::vector<Alarm>& open) = 0;

  /// What a look at the machine has found; not that somebody took notice.
  virtual void hear(const AlarmChange& change) = 0;

  /// What keeps the listener from its work; nothing when all is well.
  virtual std::optional<Cause> cause() const = 0;
};

}  // namespace insight

#endif
