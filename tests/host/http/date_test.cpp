#include "http/date.h"

#include <gtest/gtest.h>

#include <ctime>
#include <string>

namespace host {

namespace {

TEST(HttpDate, IsToldInGreenwichTimeAndEnglish) {
  EXPECT_EQ(httpDate(std::chrono::system_clock::from_time_t(784111777)), "Sun, 06 Nov 1994 08:49:37 GMT");
  EXPECT_EQ(httpDate(std::chrono::system_clock::from_time_t(0)), "Thu, 01 Jan 1970 00:00:00 GMT");
  EXPECT_EQ(httpDate(std::chrono::system_clock::from_time_t(1709251199)), "Thu, 29 Feb 2024 23:59:59 GMT");
}

TEST(HttpDate, NamesEveryDayAndMonth) {
  constexpr std::time_t kDay = 24 * 3600;
  const std::string days[] = {"Thu", "Fri", "Sat", "Sun", "Mon", "Tue", "Wed"};
  for (std::time_t day = 0; day < 7; ++day) {
    const std::string text = httpDate(std::chrono::system_clock::from_time_t(day * kDay));
    EXPECT_EQ(text, days[day] + ", 0" + std::to_string(day + 1) + " Jan 1970 00:00:00 GMT");
  }
  const std::string months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  for (std::time_t month = 0; month < 12; ++month) {
    // The fifteenth or so of each.
    const std::string text = httpDate(std::chrono::system_clock::from_time_t((14 + month * 61 / 2) * kDay));
    EXPECT_EQ(text.substr(7), " " + months[month] + " 1970 00:00:00 GMT") << text;
  }
}

}  // namespace

}  // namespace host
