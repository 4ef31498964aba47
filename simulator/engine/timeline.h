#ifndef MIRN_SIMULATOR_ENGINE_TIMELINE_H
#define MIRN_SIMULATOR_ENGINE_TIMELINE_H

#include <cstdint>
#include <optional>

#include "engine/clock.h"
#include "engine/work.h"
#include "model/machine.h"

namespace simulator {

/// Knows when something happens next, so that nobody walks the machine before: time only adds up until then.
class Timeline {
 public:
  /// That work comes on is worth telling at each percent, but not more often than this in real time.
  static constexpr std::chrono::milliseconds kBetweenPercents{500};

  /// Lets machine time pass, which may add up to more than anybody lives to see.
  void pass(Machine& machine, std::uint64_t milliseconds) const;

  bool isWorking() const { return m_end.has_value(); }

  /// Whether work ends within the time that has passed: `catchUp` has something to do.
  bool isDue(const Machine& machine) const { return m_end && machine.pendingMs >= *m_end; }

  /// All work counts the time that has passed, and what ended has its consequences.
  void catchUp(Machine& machine);

  /// To be called after each change, whoever made it: what happens next may be another thing.
  void plan(const Machine& machine);

  /// Whether work has come to its next percent and that may be told; the next call is about the
  /// percent after.
  bool takePercent(const Machine& machine, Clock::Instant now);

  /// The instant at which one of all these happens.
  Clock::Instant next(const Machine& machine, const Clock& clock) const;

 private:
  std::optional<std::uint64_t> m_end;      ///< the pending time at which work ends
  std::optional<std::uint64_t> m_percent;  ///< the pending time at which work comes to its next percent
  Clock::Instant m_mayTell = Clock::Instant::min();
};

}  // namespace simulator

#endif
