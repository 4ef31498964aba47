#include "engine/clock.h"

#include <utility>

namespace simulator {
namespace {

constexpr std::uint64_t kNanosecondsPerMillisecond = 1'000'000;

}  // namespace

Clock::Clock(Source source) : m_source(std::move(source)), m_last(m_source()) {}

void Clock::accrue() {
  const Instant now = m_source();
  const auto passed = std::chrono::duration_cast<std::chrono::nanoseconds>(now - m_last).count();
  m_last = now;
  m_nanoseconds += static_cast<std::uint64_t>(passed) * m_speed;
}

void Clock::setSpeed(std::uint32_t speed) {
  accrue();
  m_speed = speed;
}

std::uint64_t Clock::take() {
  accrue();
  const std::uint64_t milliseconds = m_nanoseconds / kNanosecondsPerMillisecond + m_byHand;
  m_nanoseconds %= kNanosecondsPerMillisecond;
  m_byHand = 0;
  return milliseconds;
}

Clock::Instant Clock::whenPassed(std::uint64_t milliseconds) const {
  constexpr std::uint64_t kYearMs = 31'536'000'000;
  if (m_speed == 0) return Instant::max();
  const std::uint64_t real = milliseconds / m_speed + 1;
  return real > kYearMs ? Instant::max() : m_last + std::chrono::milliseconds(real);
}

}  // namespace simulator
