#ifndef MIRN_INSIGHT_ALARMS_ALARM_TRACKER_H
#define MIRN_INSIGHT_ALARMS_ALARM_TRACKER_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "alarms/alarm.h"

namespace insight {

enum class AlarmStep { kRaised, kChanged, kCleared, kAcknowledged };

/// "raised", "changed", "cleared" or "acknowledged".
const char* wordOf(AlarmStep step);

struct AlarmChange {
  AlarmStep step;
  Alarm alarm;           ///< As it is after it.
  bool isWorse = false;  ///< It is more severe than before.
};

/// Makes alarms of what is wrong at each look: every open alarm is a cause, and every cause an open alarm.
/// One thread at a time; moments are milliseconds since 1970, UTC.
class AlarmTracker {
 public:
  /// What was cleared goes on when it is raised again within this.
  static constexpr std::int64_t kAgainMs = 60'000;

  /// `open` are those of an earlier run.
  explicit AlarmTracker(const std::vector<Alarm>& open = {});

  /// What differs from the look before. Where the machine `isKnown` not to be as its picture shows, nothing
  /// of it clears, nor does anything of an object whose state is unknown.
  std::vector<AlarmChange> look(const std::vector<Cause>& causes, bool isKnown, std::int64_t nowMs);

  /// Nothing where there is no such open alarm, or somebody has done it before.
  std::optional<AlarmChange> acknowledge(const std::string& id, const std::string& by, std::int64_t nowMs);

  /// By their ids.
  std::vector<Alarm> open() const;
  /// Null where there is no such open alarm.
  const Alarm* find(const std::string& id) const;

 private:
  using Alarms = std::map<std::string, Alarm>;

  std::optional<AlarmChange> see(const Cause& cause, std::int64_t nowMs);
  AlarmChange raise(const Cause& cause, std::int64_t nowMs);

  Alarms m_open;
  Alarms m_cleared;  ///< Lately.
};

}  // namespace insight

#endif
