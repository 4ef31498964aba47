#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "logger.h"
#include "logging/fake_event_log_api.h"
#include "support/redirected_stream.h"

namespace {

using ovra::Logger;

class WindowsLogger : public testing::Test {
 protected:
  WindowsLogger() { fakeEventLog = {}; }

  std::wstringbuf m_out;
  std::wstringbuf m_err;
  RedirectedStream m_redirectedOut{std::wcout, m_out};
  RedirectedStream m_redirectedErr{std::wcerr, m_err};
};

TEST_F(WindowsLogger, OpensAndClosesTheEventSourceForEachMessage) {
  auto& logger = Logger::instance();
  fakeEventLog.calls.clear();
  logger.log(LogLevel::kInfo, L"one");
  logger.log(LogLevel::kInfo, L"two");
  EXPECT_THAT(fakeEventLog.calls,
              testing::ElementsAre(L"open Ordan Ovraline", L"report 4 1 1073873154 one", L"close source",
                                   L"open Ordan Ovraline", L"report 4 1 1073873154 two", L"close source"));
  EXPECT_EQ(m_out.str(), L"one\ntwo\n");
}

TEST_F(WindowsLogger, ShowsLevelFiveAsAWarningAndRecordsAnError) {
  auto& logger = Logger::instance();
  fakeEventLog.calls.clear();
  logger.log(static_cast<LogLevel>(5), L"text");
  EXPECT_THAT(m_err.str(), testing::EndsWith(L"] Warning: text\n"));
  EXPECT_EQ(fakeEventLog.calls.at(1), L"report 1 1 3221356800 text");
}

TEST_F(WindowsLogger, HasWrittenTheConsoleLineWhenTheEventLogFails) {
  auto& logger = Logger::instance();
  fakeEventLog.opens = false;
  try {
    logger.log(LogLevel::kInfo, L"text");
    FAIL() << "logged";
  } catch (const ovra::LoggerException& failure) {
    EXPECT_EQ(failure.code(), 1);
    EXPECT_STREQ(failure.what(), "Logger could not report event. Cannot log event: cannot open event source");
  }
  EXPECT_EQ(m_out.str(), L"text\n");
}

}  // namespace
