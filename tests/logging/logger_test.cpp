#include "logger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <type_traits>
#include <vector>

#include "console_provider.h"
#include "event_log_provider.h"
#include "support/virtual_slot.h"

namespace {

using ovra::Logger;
using ovra::LoggerException;

/// What happened below the loggers of a test. Providers have no data of their own.
struct Below {
  std::vector<std::wstring> lines;
  std::function<void()> consoleFails = [] {};
  int deleted = 0;
} below;

struct Console final : ovra::LoggerBaseLogProvider {
  ~Console() { ++below.deleted; }
  void report(LogLevel level, const std::wstring& text) override {
    below.lines.push_back(L"console " + std::to_wstring(static_cast<std::int32_t>(level)) + L" " + text);
    below.consoleFails();
  }
};

struct EventLog final : ovra::LoggerBaseLogProvider {
  ~EventLog() { ++below.deleted; }
  void report(LogLevel level, const std::wstring& text) override {
    below.lines.push_back(L"event log " + std::to_wstring(static_cast<std::int32_t>(level)) + L" " + text);
  }
};

ovra::LogProviders bothProviders() {
  ovra::LogProviders providers;
  providers.emplace(ovra::kEventLogProvider, ovra::makeLogProvider<EventLog>());
  providers.emplace(ovra::kConsoleProvider, ovra::makeLogProvider<Console>());
  return providers;
}

// Modules of other builds meet these classes: what they promise of their layout.

TEST(LoggerLayout, OfProvidersIsOneOperationAndNothingElse) {
  using ovra::LoggerBaseLogProvider;
  EXPECT_EQ(virtualSlot(&LoggerBaseLogProvider::report), 0U);
  EXPECT_FALSE(std::has_virtual_destructor_v<LoggerBaseLogProvider>);
  EXPECT_EQ(sizeof(LoggerBaseLogProvider), sizeof(void*));
  EXPECT_EQ(sizeof(ovra::log::LoggerConsoleProvider), sizeof(void*));
  EXPECT_EQ(sizeof(ovra::log::LoggerEventLogProvider), sizeof(void*));
}

TEST(LoggerLayout, OfTheLoggerIsItsLockAndItsProviders) {
  struct Expected {
    std::mutex mutex;
    ovra::LogProviders providers;
  };
  EXPECT_EQ(sizeof(Logger), sizeof(Expected));
  EXPECT_FALSE(std::is_polymorphic_v<Logger>);
  EXPECT_TRUE((std::is_same_v<ovra::LogProviders::key_type, std::int32_t>));
  EXPECT_EQ(ovra::kConsoleProvider, 0);
  EXPECT_EQ(ovra::kEventLogProvider, 1);
}

TEST(LoggerLayout, OfTheExceptionIsARuntimeErrorAndItsCode) {
  struct Expected : std::runtime_error {
    std::int32_t code;
  };
  EXPECT_TRUE((std::is_base_of_v<std::runtime_error, LoggerException>));
  EXPECT_EQ(sizeof(LoggerException), sizeof(Expected));
  EXPECT_TRUE((std::is_same_v<decltype(LoggerException(0, "").code()), std::int32_t>));
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<LogLevel>, std::int32_t>));
}

class LoggerTest : public testing::Test {
 protected:
  LoggerTest() { below = {}; }

  void expectFailure(const std::string& text) {
    try {
      m_logger.log(LogLevel::kError, L"text");
      FAIL() << "logged";
    } catch (const LoggerException& failure) {
      EXPECT_EQ(failure.code(), 1);
      EXPECT_STREQ(failure.what(), text.c_str());
    }
  }

  Logger m_logger{bothProviders()};
};

TEST_F(LoggerTest, SendsAMessageToTheConsoleAndThenToTheEventLog) {
  m_logger.log(LogLevel::kWarning, L"text");
  EXPECT_THAT(below.lines, testing::ElementsAre(L"console 1 text", L"event log 1 text"));
}

TEST_F(LoggerTest, LetsAnUnknownLevelThrough) {
  m_logger.log(static_cast<LogLevel>(5), L"text");
  EXPECT_THAT(below.lines, testing::ElementsAre(L"console 5 text", L"event log 5 text"));
}

TEST_F(LoggerTest, NamesTheCauseOfARefusedReport) {
  below.consoleFails = [] { throw LoggerException(ovra::kLoggerStartFailed, "Cannot log event"); };
  expectFailure("Logger could not report event. Cannot log event");
}

TEST_F(LoggerTest, NamesTheCauseOfAnyRuntimeError) {
  below.consoleFails = [] { throw std::runtime_error("out of paper"); };
  expectFailure("Logger could not report event. out of paper");
}

TEST_F(LoggerTest, NamesNoOtherCause) {
  below.consoleFails = [] { throw std::logic_error("ignored"); };
  expectFailure("Logger could not report event");
  below.consoleFails = [] { throw 42; };
  expectFailure("Logger could not report event");
}

TEST_F(LoggerTest, EndsTheWalkAtTheFirstFailureAndReleasesTheLock) {
  below.consoleFails = [] { throw std::runtime_error("once"); };
  EXPECT_THROW(m_logger.log(LogLevel::kInfo, L"first"), LoggerException);
  EXPECT_THAT(below.lines, testing::ElementsAre(L"console 0 first"));
  below.consoleFails = [] {};
  m_logger.log(LogLevel::kInfo, L"second");
  EXPECT_THAT(below.lines,
              testing::ElementsAre(L"console 0 first", L"console 0 second", L"event log 0 second"));
}

TEST_F(LoggerTest, DeletesItsProvidersAsWhatTheyAre) {
  { const Logger shortLived(bothProviders()); }
  EXPECT_EQ(below.deleted, 2);
}

}  // namespace
