#include "net/lanes.h"

#include <utility>

namespace host {

namespace {

constexpr std::size_t kOwnWorkers = 2;  // their work never waits

WorkerPool::Waiting waiting(const Limits& limits) { return {limits.waitingCalls, limits.waitingCallsOfOne}; }

}  // namespace

Lanes::Lanes(const Limits& limits)
    : m_own(kOwnWorkers, waiting(limits)),
      m_reads(limits.readWorkers, waiting(limits)),
      m_changes(limits.changeWorkers, waiting(limits)) {}

bool Lanes::submit(Lane lane, const std::string& identity, std::function<void()> task) {
  return poolOf(lane).submit(identity, std::move(task));
}

void Lanes::join() {
  for (WorkerPool* const pool : {&m_own, &m_reads, &m_changes}) pool->join();
}

WorkerPool& Lanes::poolOf(Lane lane) {
  if (lane == Lane::kReads) return m_reads;
  return lane == Lane::kChanges ? m_changes : m_own;
}

}  // namespace host
