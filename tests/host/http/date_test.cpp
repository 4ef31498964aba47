#include "http/date.h"

#include <gtest/gtest.h>

namespace host {

namespace {

TEST(HttpDate, IsToldInGreenwichTimeAndEnglish) {
  EXPECT_EQ(httpDate(std::chrono::system_clock::from_time_t(784111777)), "Sun, 06 Nov 1994 08:49:37 GMT");
  EXPECT_EQ(httpDate(std::chrono::system_clock::from_time_t(0)), "Thu, 01 Jan 1970 00:00:00 GMT");
  EXPECT_EQ(httpDate(std::chrono::system_clock::from_time_t(1709251199)), "Thu, 29 Feb 2024 23:59:59 GMT");
}

}  // namespace

}  // namespace host
