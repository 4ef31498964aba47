#include "alarms/alarm_tracker.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <set>
#include <utility>

namespace insight {

namespace {

bool isOfService(const Cause& cause) { return cause.object.type == "service"; }

/// Whether the object of a cause is in a state that tells nothing.
bool isInDoubt(const Cause& cause, const std::vector<Cause>& causes) {
  return std::any_of(causes.begin(), causes.end(), [&](const Cause& other) {
    return other.severity == Severity::kUnknown && other.object.type == cause.object.type &&
           other.object.id == cause.object.id;
  });
}

}  // namespace

const char* wordOf(AlarmStep step) {
  constexpr std::array kWords{"raised", "changed", "cleared", "acknowledged"};
  return kWords.at(static_cast<std::size_t>(step));
}

AlarmTracker::AlarmTracker(const std::vector<Alarm>& open) {
  for (const Alarm& alarm : open) m_open[alarm.id()] = alarm;
}

std::vector<AlarmChange> AlarmTracker::look(const std::vector<Cause>& causes, bool isKnown,
                                            std::int64_t nowMs) {
  for (auto each = m_cleared.begin(); each != m_cleared.end();) {
    each = nowMs - *each->second.clearedMs > kAgainMs ? m_cleared.erase(each) : std::next(each);
  }
  std::vector<AlarmChange> changes;
  std::set<std::string> seen;
  for (const Cause& cause : causes) {
    if (!seen.insert(cause.id()).second) continue;
    if (auto change = see(cause, nowMs)) changes.push_back(std::move(*change));
  }
  for (auto each = m_open.begin(); each != m_open.end();) {
    const Cause& cause = each->second.cause;
    const bool mayClear = isOfService(cause) || (isKnown && !isInDoubt(cause, causes));
    if (seen.count(each->first) != 0 || !mayClear) {
      ++each;
      continue;
    }
    each->second.clearedMs = nowMs;
    changes.push_back({AlarmStep::kCleared, each->second});
    m_cleared[each->first] = std::move(each->second);
    each = m_open.erase(each);
  }
  return changes;
}

std::optional<AlarmChange> AlarmTracker::see(const Cause& cause, std::int64_t nowMs) {
  const auto found = m_open.find(cause.id());
  if (found == m_open.end()) return raise(cause, nowMs);
  Alarm& alarm = found->second;
  const Severity before = std::exchange(alarm.cause, cause).severity;
  if (before == cause.severity) return {};
  if (cause.severity > before) {  // nobody has seen that
    alarm.acknowledgedBy.clear();
    alarm.acknowledgedMs.reset();
  }
  return AlarmChange{AlarmStep::kChanged, alarm, cause.severity > before};
}

AlarmChange AlarmTracker::raise(const Cause& cause, std::int64_t nowMs) {
  Alarm alarm;
  alarm.sinceMs = nowMs;
  const auto cleared = m_cleared.find(cause.id());
  if (cleared != m_cleared.end()) {
    alarm = cleared->second;
    alarm.clearedMs.reset();
    ++alarm.count;
    m_cleared.erase(cleared);
  }
  alarm.cause = cause;
  m_open[alarm.id()] = alarm;
  return {AlarmStep::kRaised, std::move(alarm)};
}

std::optional<AlarmChange> AlarmTracker::acknowledge(const std::string& id, const std::string& by,
                                                     std::int64_t nowMs) {
  const auto found = m_open.find(id);
  if (found == m_open.end() || found->second.acknowledgedMs) return {};
  found->second.acknowledgedBy = by;
  found->second.acknowledgedMs = nowMs;
  return AlarmChange{AlarmStep::kAcknowledged, found->second};
}

std::vector<Alarm> AlarmTracker::open() const {
  std::vector<Alarm> open;
  for (const auto& [id, alarm] : m_open) open.push_back(alarm);
  return open;
}

const Alarm* AlarmTracker::find(const std::string& id) const {
  const auto found = m_open.find(id);
  return found == m_open.end() ? nullptr : &found->second;
}

}  // namespace insight
