#include "utc_time.h"

#include <array>
#include <cstdio>
#include <regex>

#include "tick_clock.h"

namespace {

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

std::int64_t daysBefore(const Date& date) {
  std::int64_t days = date.day - 1;
  for (int year = 1970; year < date.year; ++year) days += 365 + isLeap(year);
  for (int month = 1; month < date.month; ++month) days += daysOf(month, date.year);
  return days;
}

bool isReal(const Date& date) {
  return date.year >= 1970 && date.month >= 1 && date.month <= 12 && date.day >= 1 &&
         date.day <= daysOf(date.month, date.year);
}

/// The first three digits of a fraction, as if there were three.
int millisecondsIn(std::string fraction) {
  fraction.resize(3, '0');
  return std::stoi(fraction);
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

std::optional<std::int64_t> utcTicks(const std::string& text) {
  static const std::regex kForm(
      R"((\d{4})-(\d\d)-(\d\d)[Tt](\d\d):(\d\d):(\d\d)(?:\.(\d{1,9}))?(?:[Zz]|([+-])(\d\d):(\d\d)))");
  std::smatch parts;
  if (!std::regex_match(text, parts, kForm)) return {};
  const auto number = [&](std::size_t part) {
    return parts[part].matched ? std::stoi(parts[part].str()) : 0;
  };
  const Date date{number(1), number(2), number(3)};
  if (!isReal(date) || number(4) > 23 || number(5) > 59 || number(6) > 59) return {};
  if (number(9) > 23 || number(10) > 59) return {};
  const std::int64_t local =
      daysBefore(date) * kSecondsPerDay + number(4) * 3600 + number(5) * 60 + number(6);
  const std::int64_t offset = number(9) * 3600 + number(10) * 60;
  const std::int64_t seconds = parts[8].str() == "-" ? local + offset : local - offset;
  if (seconds < 0) return {};
  const int milliseconds = parts[7].matched ? millisecondsIn(parts[7].str()) : 0;
  return seconds * kTicksPerSecond + milliseconds * kTicksPerMillisecond;
}
