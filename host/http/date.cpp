#include "http/date.h"

#include <array>
#include <boost/date_time/posix_time/conversion.hpp>
#include <cstdio>
#include <ctime>

namespace host {

namespace {

// Not the locale's names.
constexpr std::array<const char*, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr int kFirstYear = 1900;

}  // namespace

std::string httpDate(std::chrono::system_clock::time_point time) {
  namespace pt = boost::posix_time;
  const std::tm parts = pt::to_tm(pt::from_time_t(std::chrono::system_clock::to_time_t(time)));
  std::array<char, 80> text{};
  std::snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d GMT",
                kDays.at(static_cast<std::size_t>(parts.tm_wday)), parts.tm_mday,
                kMonths.at(static_cast<std::size_t>(parts.tm_mon)), parts.tm_year + kFirstYear, parts.tm_hour,
                parts.tm_min, parts.tm_sec);
  return text.data();
}

const std::string& httpDateNow() {
  thread_local std::time_t second = -1;
  thread_local std::string text;
  const auto now = std::chrono::system_clock::now();
  const std::time_t current = std::chrono::system_clock::to_time_t(now);
  if (current != second) text = httpDate(now);
  second = current;
  return text;
}

}  // namespace host
