#ifndef MIRN_INSIGHT_JOBS_JOB_TRACKER_H
#define MIRN_INSIGHT_JOBS_JOB_TRACKER_H

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "jobs/call_notes.h"
#include "jobs/job.h"
#include "view/machine_view.h"

namespace insight {

enum class JobStep { kBegun, kProgressed, kEnded };

struct JobChange {
  JobStep step;
  Job job;  ///< As it is after it.
};

/// Makes jobs of the work under way at each look: every running job is in progress, and every work in
/// progress a running job. One thread at a time; moments are milliseconds since 1970, UTC.
class JobTracker {
 public:
  /// Ids begin with `epoch`. `works` tell who may have begun what. `running` are those of an earlier run that
  /// had no end.
  JobTracker(std::string epoch, OperationWorks works, std::vector<Job> running = {});

  CallNotes& calls() { return m_calls; }

  /// What differs from the look before. A view without a picture, or one that `isKnown` to be behind, changes
  /// nothing; work that shows after such a time has no known start.
  std::vector<JobChange> look(const MachineView& machine, bool isKnown, std::int64_t nowMs);

  /// In the order of their ids' volumes.
  std::vector<Job> running() const;

 private:
  using Key = std::pair<std::wstring, std::string>;  ///< Volume and kind.

  void meetEarlier(const MachineView& machine, std::int64_t nowMs, std::vector<JobChange>& changes);
  void endGone(const MachineView& machine, std::int64_t nowMs, std::vector<JobChange>& changes);
  Job begin(const MachineView& machine, const Key& key, std::int64_t nowMs);
  void end(Job& job, const MachineView& machine, std::int64_t nowMs) const;

  const std::string m_epoch;
  std::uint64_t m_lastNumber = 0;
  bool m_hasSeen = false;  ///< The look before was a known one.
  std::vector<Job> m_earlier;
  std::map<Key, Job> m_running;
  CallNotes m_calls;
};

}  // namespace insight

#endif
