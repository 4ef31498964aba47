#include "jobs/job_tracker.h"

#include <algorithm>
#include <set>

#include "text.h"

namespace insight {

namespace {

/// A work that showed this much may have ended whole between two looks.
constexpr std::uint64_t kNearlyWhole = 99;

std::string outcomeOf(const Job& job, const VolumeView* volume, bool wasCancelled) {
  if (volume != nullptr && volume->state == L"FAILED") return "failed";
  if (wasCancelled) return "cancelled";
  if (volume == nullptr) return "ended";
  if (job.progress.percent().value_or(0) >= kNearlyWhole) return "completed";
  if (volume->state == L"DEGRADED" && job.kind == "rebuild") return "failed";
  // A volume that is being verified looks whole all the time.
  const bool isWhole = volume->state == L"NORMAL" && volume->isInitialized;
  return isWhole && job.kind != "verify" ? "completed" : "ended";
}

}  // namespace

JobTracker::JobTracker(std::string epoch, OperationWorks works, std::vector<Job> running)
    : m_epoch(std::move(epoch)), m_earlier(std::move(running)), m_calls(std::move(works)) {}

std::vector<JobChange> JobTracker::look(const MachineView& machine, bool isKnown, std::int64_t nowMs) {
  std::vector<JobChange> changes;
  if (!isKnown || !machine.takenAt) {
    m_hasSeen = false;
    return changes;
  }
  meetEarlier(machine, nowMs, changes);
  endGone(machine, nowMs, changes);
  for (const WorkView& work : machine.work) {
    const Key key{work.volumeId, jobKindOf(work.action)};
    const VolumeView* const volume = machine.volume(work.volumeId);
    const auto [place, isNew] = m_running.try_emplace(key);
    Job& job = place->second;
    if (isNew) job = begin(machine, key, nowMs);
    const bool hasProgressed = volume != nullptr && job.progress.see(volume->percent, nowMs);
    job.seenToMs = nowMs;
    if (isNew) {
      changes.push_back({JobStep::kBegun, job});
    } else if (hasProgressed) {
      changes.push_back({JobStep::kProgressed, job});
    }
  }
  m_hasSeen = true;
  return changes;
}

/// Work of an earlier run goes on where the machine does it still, and no less of it is done.
void JobTracker::meetEarlier(const MachineView& machine, std::int64_t nowMs,
                             std::vector<JobChange>& changes) {
  for (Job& job : std::exchange(m_earlier, {})) {
    const Key key{job.object.id, job.kind};
    const VolumeView* const volume = machine.volume(job.object.id);
    const bool isUnderWay = std::any_of(machine.work.begin(), machine.work.end(), [&](const WorkView& work) {
      return work.volumeId == key.first && jobKindOf(work.action) == key.second;
    });
    if (isUnderWay && volume != nullptr && volume->percent >= job.progress.percent().value_or(0) &&
        m_running.count(key) == 0) {
      m_running.emplace(key, std::move(job));
      continue;
    }
    job.isEndUnseen = true;
    end(job, machine, nowMs);
    changes.push_back({JobStep::kEnded, std::move(job)});
  }
}

void JobTracker::endGone(const MachineView& machine, std::int64_t nowMs, std::vector<JobChange>& changes) {
  std::set<Key> underWay;
  for (const WorkView& work : machine.work) underWay.insert({work.volumeId, jobKindOf(work.action)});
  for (auto each = m_running.begin(); each != m_running.end();) {
    if (underWay.count(each->first) != 0) {
      ++each;
      continue;
    }
    end(each->second, machine, nowMs);
    changes.push_back({JobStep::kEnded, std::move(each->second)});
    each = m_running.erase(each);
  }
}

Job JobTracker::begin(const MachineView& machine, const Key& key, std::int64_t nowMs) {
  Job job;
  job.id = m_epoch + '-' + std::to_string(++m_lastNumber);
  job.kind = key.second;
  const VolumeView* const volume = machine.volume(key.first);
  job.object = {"volume", key.first, volume == nullptr ? std::wstring() : volume->name};
  if (m_hasSeen) {
    job.startMs = nowMs;
    job.actor = m_calls.starterOf(job.kind, wideToUtf8(key.first), nowMs).value_or(Job::kMachine);
  }
  job.seenFromMs = nowMs;
  return job;
}

void JobTracker::end(Job& job, const MachineView& machine, std::int64_t nowMs) const {
  job.endMs = nowMs;
  job.outcome = outcomeOf(job, machine.volume(job.object.id),
                          m_calls.wasCancelled(job.kind, wideToUtf8(job.object.id), nowMs));
}

std::vector<Job> JobTracker::running() const {
  std::vector<Job> running;
  for (const auto& [key, job] : m_running) running.push_back(job);
  return running;
}

}  // namespace insight
