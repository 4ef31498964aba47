#ifndef MIRN_INSIGHT_ALARMS_ALARM_H
#define MIRN_INSIGHT_ALARMS_ALARM_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "health/cause.h"
#include "history/entry.h"

namespace insight {

/// A cause over time. Plain value; moments are milliseconds since 1970, UTC.
struct Alarm {
  Cause cause;  ///< As last seen.
  std::int64_t sinceMs = 0;
  std::optional<std::int64_t> clearedMs;  ///< Nothing while it is open.
  bool isEndUnseen = false;               ///< Nobody watched when it cleared.
  std::uint64_t count = 1;                ///< How often it was raised, with short times between.
  std::string acknowledgedBy;             ///< Empty where nobody did.
  std::optional<std::int64_t> acknowledgedMs;

  std::string id() const { return cause.id(); }
};

/// For clients: the cause, and what became of it.
boost::json::object formOf(const Alarm& alarm);

/// As the history keeps it. Steps are not read back: the next look tells them anew.
LastingRecord recordOf(const Alarm& alarm);
Alarm alarmOf(const LastingRecord& record);

}  // namespace insight

#endif
