#include "net/lanes.h"

#include <limits>
#include <utility>

namespace host {

namespace {

constexpr std::size_t kOwnWorkers = 2;  // their work never waits
constexpr std::size_t kPartWorkers = 4;
constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();

WorkerPool::Waiting waiting(const Limits& limits) { return {limits.waitingCalls, limits.waitingCallsOfOne}; }

}  // namespace

Lanes::Lanes(const Limits& limits)
    : m_own(kOwnWorkers, waiting(limits)),
      m_reads(limits.readWorkers, waiting(limits)),
      m_changes(limits.changeWorkers, waiting(limits)),
      m_parts(kPartWorkers, {kAll, kAll}) {}

bool Lanes::submit(Lane lane, const std::string& identity, std::function<void()> task) {
  return poolOf(lane).submit(identity, std::move(task));
}

void Lanes::join() {
  for (WorkerPool* const pool : {&m_own, &m_reads, &m_changes, &m_parts}) pool->join();
}

WorkerPool& Lanes::poolOf(Lane lane) {
  switch (lane) {
    case Lane::kReads:
      return m_reads;
    case Lane::kChanges:
      return m_changes;
    case Lane::kParts:
      return m_parts;
    default:
      return m_own;
  }
}

}  // namespace host
