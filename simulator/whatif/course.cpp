#include "whatif/course.h"

#include <algorithm>
#include <utility>

#include "engine/incidents.h"
#include "engine/settle.h"
#include "engine/work.h"
#include "model/redundancy.h"
#include "twin/published_words.h"

namespace simulator {
namespace {

/// More ends of work than a machine has volumes and spares, many times over.
constexpr int kMostEnds = 100'000;

}  // namespace

Course::Course(Machine& machine) : m_machine(machine) {
  for (const auto& entry : std::as_const(machine).volumes) {
    m_states[entry.first] = publishedState(machine, entry.second);
    m_served[entry.first] = healthOf(machine, entry.second) != Health::LOST;
  }
  for (const auto& entry : std::as_const(machine).arrays) m_members[entry.first] = entry.second.disks;
  look();
  m_hasBegun = true;
}

void Course::let(const AskedEvent& event) {
  EventOutcome outcome{event, m_nowMs, true};
  if (event.kind == EventKind::WAIT) {
    pass(event.seconds * 1000);
  } else {
    try {
      EndDevice& device = findDevice(m_machine, event.disk);
      event.kind == EventKind::FAIL ? failDisk(m_machine, device) : pullDevice(m_machine, device);
      settle(m_machine);
      look();
    } catch (const Refusal&) {
      outcome.hasHappened = false;
    }
  }
  m_outcomes.push_back(std::move(outcome));
}

void Course::goOn() {
  for (int ends = 0; ends < kMostEnds; ++ends) {
    const auto next = upcoming(m_machine).end;
    if (!next) return;
    pass(*next);
  }
}

void Course::pass(std::uint64_t milliseconds) {
  while (milliseconds > 0) {
    const std::uint64_t step = std::min(upcoming(m_machine).end.value_or(milliseconds), milliseconds);
    advance(m_machine, step);
    m_nowMs += step;
    milliseconds -= step;
    look();
  }
}

void Course::look() {
  for (const auto& entry : std::as_const(m_machine).arrays) lookAt(entry.second);
  for (const auto& entry : std::as_const(m_machine).volumes) lookAt(entry.second);
}

void Course::lookAt(const Array& array) {
  std::vector<Handle>& before = m_members[array.handle];
  for (std::size_t i = 0; i < array.disks.size() && i < before.size(); ++i) {
    if (array.disks[i] != before[i])
      m_takeovers.push_back({m_nowMs, array.handle, array.disks[i], before[i]});
  }
  before = array.disks;
}

void Course::lookAt(const Volume& volume) {
  std::string_view& state = m_states[volume.handle];
  const std::string_view now = publishedState(m_machine, volume);
  if (now != state) m_changes.push_back({m_nowMs, volume.handle, state, now});
  state = now;
  const bool isExposed = healthOf(m_machine, volume) != Health::INTACT;
  const auto open = std::find_if(m_exposures.begin(), m_exposures.end(), [&](const Exposure& each) {
    return each.volume == volume.handle && !each.toMs;
  });
  if (isExposed && open == m_exposures.end())
    m_exposures.push_back({volume.handle, m_nowMs, !m_hasBegun, {}});
  if (!isExposed && open != m_exposures.end()) open->toMs = m_nowMs;
}

std::vector<Handle> Course::lost() const {
  std::vector<Handle> volumes;
  for (const auto& entry : std::as_const(m_machine).volumes) {
    const bool serves = healthOf(m_machine, entry.second) != Health::LOST;
    if (!serves && m_served.at(entry.first)) volumes.push_back(entry.first);
  }
  return volumes;
}

}  // namespace simulator
