#include "engine/timeline.h"

#include <algorithm>
#include <limits>

namespace simulator {

void Timeline::pass(Machine& machine, std::uint64_t milliseconds) const {
  if (!m_end) return;  // nothing runs: the time leaves no trace
  const std::uint64_t room = std::numeric_limits<std::uint64_t>::max() - machine.pendingMs;
  machine.pendingMs += std::min(room, milliseconds);
}

void Timeline::catchUp(Machine& machine) {
  const std::uint64_t passed = machine.pendingMs;
  machine.pendingMs = 0;
  advance(machine, passed);
  plan(machine);
}

void Timeline::plan(const Machine& machine) {
  const Upcoming next = upcoming(machine, machine.pendingMs);
  m_end = next.end;
  m_percent = next.percent;
}

bool Timeline::takePercent(const Machine& machine, Clock::Instant now) {
  if (!m_percent || machine.pendingMs < *m_percent || now < m_mayTell) return false;
  m_mayTell = now + kBetweenPercents;
  plan(machine);
  return true;
}

Clock::Instant Timeline::next(const Machine& machine, const Clock& clock) const {
  if (!m_end) return Clock::Instant::max();
  const auto whenPending = [&](std::uint64_t moment) {
    const bool isOver = moment <= machine.pendingMs;
    return isOver ? clock.now() : clock.whenPassed(moment - machine.pendingMs);
  };
  return std::min(whenPending(*m_end), std::max(whenPending(*m_percent), m_mayTell));
}

}  // namespace simulator
