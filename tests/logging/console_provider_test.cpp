#include "console_provider.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <iostream>
#include <regex>
#include <sstream>
#include <vector>

#include "console_line.h"
#include "local_time.h"
#include "support/redirected_stream.h"
#include "support/time_zone.h"

namespace {

class ConsoleProvider : public testing::Test {
 protected:
  void report(std::int32_t level, const std::wstring& text) {
    m_provider.report(static_cast<LogLevel>(level), text);
  }

  static bool isTimed(const std::wstring& line, const std::wstring& rest) {
    return std::regex_match(line,
                            std::wregex(L"\\[\\d\\d-\\d\\d-\\d{4} \\d\\d-\\d\\d-\\d\\d\\] " + rest + L"\n"));
  }

  ovra::log::LoggerConsoleProvider m_provider;
  std::wstringbuf m_out;
  std::wstringbuf m_err;
  RedirectedStream m_redirectedOut{std::wcout, m_out};
  RedirectedStream m_redirectedErr{std::wcerr, m_err};
};

TEST_F(ConsoleProvider, WritesInformationBareToTheOutput) {
  report(0, L"Mirn is ready");
  EXPECT_EQ(m_out.str(), L"Mirn is ready\n");
  EXPECT_EQ(m_err.str(), L"");
}

TEST_F(ConsoleProvider, WritesWarningsWithTheTimeToTheErrorStream) {
  report(1, L"text");
  EXPECT_TRUE(isTimed(m_err.str(), L"Warning: text")) << testing::PrintToString(m_err.str());
  EXPECT_EQ(m_out.str(), L"");
}

TEST_F(ConsoleProvider, WritesErrorsWithTheTimeToTheErrorStream) {
  report(2, L"text");
  EXPECT_TRUE(isTimed(m_err.str(), L"Error: text")) << testing::PrintToString(m_err.str());
  EXPECT_EQ(m_out.str(), L"");
}

TEST_F(ConsoleProvider, WritesThePresentLocalTime) {
  const TimeZone away("XYZ-5:45");  // so that no other zone's time is taken for it
  std::time_t second = std::time(nullptr);
  report(2, L"text");
  const std::time_t last = std::time(nullptr);
  std::vector<std::wstring> lines;
  for (; second <= last; ++second) {
    lines.push_back(ovra::log::consolePrefix(LogLevel::kError, localTime(second)) + L"text\n");
  }
  EXPECT_THAT(lines, testing::Contains(m_err.str()));
}

TEST_F(ConsoleProvider, ReadsAnUnknownLevelAsAWarning) {
  report(5, L"text");
  EXPECT_TRUE(isTimed(m_err.str(), L"Warning: text")) << testing::PrintToString(m_err.str());
}

}  // namespace
