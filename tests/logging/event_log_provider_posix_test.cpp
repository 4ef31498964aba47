#include <gtest/gtest.h>
#include <syslog.h>

#include <array>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "event_log_provider.h"
#include "support/by_name.h"

namespace {

std::vector<std::string> calls;

}  // namespace

// These take the place of the system's.
extern "C" void openlog(const char* ident, int option, int facility) {
  calls.push_back(std::string("open ") + ident + " " + std::to_string(option) + " " +
                  std::to_string(facility));
}
extern "C" void closelog() { calls.push_back("close"); }
extern "C" void syslog(int priority, const char* format, ...) {
  std::array<char, 200> text{};
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text.data(), text.size(), format, arguments);
  va_end(arguments);
  calls.push_back(std::to_string(priority) + " " + text.data());
}

namespace {

struct Row {
  const char* name;
  std::int32_t level;
  int priority;
};

class SyslogLevel : public testing::TestWithParam<Row> {};

TEST_P(SyslogLevel, HasItsPriority) {
  calls.clear();
  ovra::log::LoggerEventLogProvider provider;
  EXPECT_TRUE(calls.empty()) << "nothing is registered";
  provider.report(static_cast<LogLevel>(GetParam().level), L"100 % done");
  EXPECT_EQ(calls, (std::vector<std::string>{"open Ordan Ovraline 0 " + std::to_string(LOG_DAEMON),
                                             std::to_string(GetParam().priority) + " 100 % done", "close"}));
}

INSTANTIATE_TEST_SUITE_P(Syslog, SyslogLevel,
                         testing::Values(Row{"Info", 0, LOG_INFO}, Row{"Warning", 1, LOG_WARNING},
                                         Row{"Error", 2, LOG_ERR}, Row{"Five", 5, LOG_ERR},
                                         Row{"Negative", -1, LOG_ERR}),
                         ByName());

struct Message {
  const char* name;
  std::wstring text;
  std::string logged;
};

class SyslogMessage : public testing::TestWithParam<Message> {};

TEST_P(SyslogMessage, IsUtf8OrEscaped) {
  calls.clear();
  ovra::log::LoggerEventLogProvider().report(LogLevel::kInfo, GetParam().text);
  EXPECT_EQ(calls.at(1), std::to_string(LOG_INFO) + " " + GetParam().logged);
}

INSTANTIATE_TEST_SUITE_P(Syslog, SyslogMessage,
                         testing::Values(Message{"Euro", L"1 \x20AC", "1 \xE2\x82\xAC"},
                                         Message{"LoneSurrogate", std::wstring{L'a', wchar_t(0xD83D)},
                                                 "a\\uD83D"}),
                         ByName());

}  // namespace
