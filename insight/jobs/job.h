#ifndef MIRN_INSIGHT_JOBS_JOB_H
#define MIRN_INSIGHT_JOBS_JOB_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "history/entry.h"
#include "jobs/progress.h"
#include "view/object_ref.h"

namespace insight {

/// Work on a volume, from its beginning to its end. Plain value; moments are milliseconds since 1970, UTC.
struct Job {
  static constexpr char kMachine[] = "machine";  ///< As actor: no client of ours.

  std::string id;
  std::string kind;  ///< "rebuild", "initialize", "verify", "migrate", or another work's own word.
  ObjectRef object;
  std::string actor = kMachine;
  std::optional<std::int64_t> startMs;  ///< Nothing where it was found running.
  std::int64_t seenFromMs = 0;
  std::int64_t seenToMs = 0;
  std::optional<std::int64_t> endMs;  ///< At which it was seen to have ended.
  bool isEndUnseen = false;           ///< Nobody watched when it ended.
  std::string outcome;                ///< "completed", "cancelled", "failed" or "ended"; empty while it runs.
  Progress progress;
};

/// What a work's state word stands for.
std::string jobKindOf(const std::wstring& action);

/// For clients.
boost::json::object formOf(const Job& job, std::int64_t nowMs);

/// As the history keeps it. The moments of its percents are not read back.
LastingRecord recordOf(const Job& job);
Job jobOf(const LastingRecord& record);

}  // namespace insight

#endif
