#include "engine/clock.h"

#include <limits>
#include <utility>

namespace simulator {
namespace {

constexpr std::uint64_t kNanosecondsPerMillisecond = 1'000'000;

/// The sum, or the largest number when that is larger.
std::uint64_t sumOf(std::uint64_t one, std::uint64_t other) {
  const std::uint64_t sum = one + other;
  return sum < one ? std::numeric_limits<std::uint64_t>::max() : sum;
}

}  // namespace

Clock::Clock(Source source) : m_source(std::move(source)), m_last(m_source()) {}

/// Whole milliseconds and the rest go through the product apart: together they would wrap after hours.
void Clock::accrue() {
  const Instant now = m_source();
  const auto count = std::chrono::duration_cast<std::chrono::nanoseconds>(now - m_last).count();
  const auto passed = static_cast<std::uint64_t>(count);
  m_last = now;
  m_nanoseconds += passed % kNanosecondsPerMillisecond * m_speed;
  const std::uint64_t milliseconds = passed / kNanosecondsPerMillisecond * m_speed;
  m_milliseconds = sumOf(m_milliseconds, milliseconds + m_nanoseconds / kNanosecondsPerMillisecond);
  m_nanoseconds %= kNanosecondsPerMillisecond;
}

void Clock::setSpeed(std::uint32_t speed) {
  accrue();
  m_speed = speed;
}

void Clock::advance(std::uint64_t milliseconds) { m_milliseconds = sumOf(m_milliseconds, milliseconds); }

std::uint64_t Clock::take() {
  accrue();
  return std::exchange(m_milliseconds, 0);
}

Clock::Instant Clock::whenPassed(std::uint64_t milliseconds) const {
  constexpr std::uint64_t kYearMs = 31'536'000'000;
  if (m_speed == 0) return Instant::max();
  const std::uint64_t real = milliseconds / m_speed + 1;
  return real > kYearMs ? Instant::max() : m_last + std::chrono::milliseconds(real);
}

}  // namespace simulator
