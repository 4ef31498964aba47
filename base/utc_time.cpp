#include "utc_time.h"

#include <array>
#include <cstdio>

#include "tick_clock.h"

namespace {

constexpr std::int64_t kTicksPerMillisecond = kTicksPerSecond / 1000;
constexpr std::int64_t kSecondsPerDay = 86400;

struct Date {
  int year;
  int month;
  int day;
};

bool isLeap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysOf(int month, int year) {
  constexpr std::array<int, 12> kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return kDays.at(static_cast<std::size_t>(month - 1)) + (month == 2 && isLeap(year) ? 1 : 0);
}

/// The system's own conversions share a buffer or differ in name from system to system.
Date dateOf(std::int64_t days) {
  Date date{1970, 1, 1};
  for (; days >= 365 + isLeap(date.year); ++date.year) days -= 365 + isLeap(date.year);
  for (; days >= daysOf(date.month, date.year); ++date.month) days -= daysOf(date.month, date.year);
  date.day += static_cast<int>(days);
  return date;
}

}  // namespace

std::string utcText(std::int64_t ticks) {
  const std::int64_t seconds = ticks / kTicksPerSecond;
  const int inDay = static_cast<int>(seconds % kSecondsPerDay);
  const int milliseconds = static_cast<int>(ticks % kTicksPerSecond / kTicksPerMillisecond);
  const Date date = dateOf(seconds / kSecondsPerDay);
  std::array<char, 40> text{};
  const int size =
      std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", date.year, date.month,
                    date.day, inDay / 3600, inDay / 60 % 60, inDay % 60, milliseconds);
  return std::string(text.data(), static_cast<std::size_t>(size));
}
