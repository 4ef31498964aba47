#ifndef MIRN_SIMULATOR_ENGINE_CLOCK_H
#define MIRN_SIMULATOR_ENGINE_CLOCK_H

#include <chrono>
#include <cstdint>
#include <functional>

namespace simulator {

/// Machine time: real time at a speed, or moved by hand alone when the speed is 0.
class Clock {
 public:
  using Instant = std::chrono::steady_clock::time_point;
  using Source = std::function<Instant()>;

  explicit Clock(Source source = std::chrono::steady_clock::now);

  /// Milliseconds of machine time in a millisecond of real time, from now on. 0: the clock is moved by hand.
  void setSpeed(std::uint32_t speed);

  /// Moves the machine time on by hand.
  void advance(std::uint64_t milliseconds);

  /// The machine time since the last call, or since construction; never more than the largest number.
  std::uint64_t take();

  /// The instant at which the machine time will have moved on by that much; the far future when
  /// it stands still.
  Instant whenPassed(std::uint64_t milliseconds) const;

  Instant now() const { return m_source(); }

 private:
  void accrue();

  Source m_source;
  Instant m_last;
  std::uint32_t m_speed = 1;
  std::uint64_t m_milliseconds = 0;  ///< machine time not taken yet, the largest number when there is more
  std::uint64_t m_nanoseconds = 0;   ///< and less than a millisecond of it
};

}  // namespace simulator

#endif
