#ifndef MIRN_INSIGHT_JOBS_PROGRESS_H
#define MIRN_INSIGHT_JOBS_PROGRESS_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

namespace insight {

/// How fast a percent rises: taken between the moments at which it changed, of which the last few count.
/// Moments are milliseconds since 1970, UTC.
class Progress {
 public:
  static constexpr std::size_t kSteps = 20;
  static constexpr std::size_t kFewestSteps = 5;

  Progress() = default;
  /// Of a work whose moments are not known.
  explicit Progress(std::uint64_t percent) : m_percent(percent) {}

  /// True when the percent is another than before.
  bool see(std::uint64_t percent, std::int64_t nowMs);

  /// Nothing before the first look.
  std::optional<std::uint64_t> percent() const { return m_percent; }
  /// Nothing before there are two changes.
  std::optional<double> percentPerHour() const;
  /// Nothing before there were enough steps.
  std::optional<std::int64_t> secondsLeft(std::int64_t nowMs) const;

 private:
  struct Change {
    std::uint64_t percent;
    std::int64_t atMs;
  };

  std::optional<std::uint64_t> m_percent;
  bool m_isSeen = false;  ///< There was a look.
  std::deque<Change> m_changes;
};

}  // namespace insight

#endif
