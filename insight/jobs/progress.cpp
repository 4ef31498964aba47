#include "jobs/progress.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace insight {

namespace {

constexpr double kMillisecondsPerHour = 3'600'000;
constexpr std::uint64_t kWhole = 100;

}  // namespace

bool Progress::see(std::uint64_t percent, std::int64_t nowMs) {
  const auto before = std::exchange(m_percent, percent);
  if (!std::exchange(m_isSeen, true))
    return before != m_percent;  // nobody knows for how long it has stood there
  if (before == percent) return false;
  if (percent < *before) m_changes.clear();  // it has begun again
  m_changes.push_back({percent, nowMs});
  if (m_changes.size() > kSteps) m_changes.pop_front();
  return true;
}

std::optional<double> Progress::percentPerHour() const {
  if (m_changes.size() < 2) return {};
  const Change& first = m_changes.front();
  const Change& last = m_changes.back();
  if (last.atMs <= first.atMs || last.percent <= first.percent) return {};
  return static_cast<double>(last.percent - first.percent) * kMillisecondsPerHour /
         static_cast<double>(last.atMs - first.atMs);
}

std::optional<std::int64_t> Progress::secondsLeft(std::int64_t nowMs) const {
  const auto rate = percentPerHour();
  if (!rate || m_changes.size() < kFewestSteps) return {};
  const Change& last = m_changes.back();
  const double left =
      static_cast<double>(kWhole - std::min(last.percent, kWhole)) * kMillisecondsPerHour / *rate -
      static_cast<double>(nowMs - last.atMs);
  return static_cast<std::int64_t>(std::llround(std::max(0.0, left) / 1000));
}

}  // namespace insight
