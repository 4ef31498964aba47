#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <functional>
#include <optional>

#include "event_log_provider.h"
#include "logging/fake_event_log_api.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"

namespace {

using ovra::LoggerException;
using ovra::log::LoggerEventLogProvider;
using testing::ElementsAre;

class WindowsEventLog : public testing::Test {
 protected:
  WindowsEventLog() { fakeEventLog = {}; }

  /// The calls of one report, without those of the registration.
  static void report(std::int32_t level, const std::wstring& text) {
    LoggerEventLogProvider provider;
    fakeEventLog.calls.clear();
    provider.report(static_cast<LogLevel>(level), text);
  }
};

TEST_F(WindowsEventLog, RegistersItsSourceWithFourValuesInOrder) {
  const TemporaryFolder folder;
  writeText(folder / "host.exe", "");
  const auto application = boost::filesystem::canonical(folder / "host.exe").wstring();
  const auto length = std::to_wstring(2 * application.size());
  fakeEventLog.path = (folder / "." / "host.exe").wstring();

  const LoggerEventLogProvider provider;

  EXPECT_THAT(
      fakeEventLog.calls,
      ElementsAre(L"create SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\Ordan Ovraline",
                  L"application path", L"set EventMessageFile = " + application + L" of " + length,
                  L"set CategoryCount = 1", L"set CategoryMessageFile = " + application + L" of " + length,
                  L"set TypesSupported = 7", L"close key"));
}

struct RefusedStart {
  const char* name;
  std::function<void()> arrange;
  std::optional<std::int32_t> code;  ///< None for what is no LoggerException.
  std::string text;
};

class Registration : public WindowsEventLog, public testing::WithParamInterface<RefusedStart> {};

TEST_P(Registration, FailsWithItsText) {
  GetParam().arrange();
  std::optional<std::int32_t> code;
  std::string text;
  try {
    const LoggerEventLogProvider provider;
  } catch (const LoggerException& failure) {
    code = failure.code();
    text = failure.what();
  } catch (const std::runtime_error& failure) {
    text = failure.what();
  }
  EXPECT_EQ(code, GetParam().code);
  EXPECT_EQ(text, GetParam().text);
}

std::function<void()> refuse(const std::wstring& value) {
  return [value] { fakeEventLog.refusedValue = value; };
}

INSTANTIATE_TEST_SUITE_P(
    WindowsEventLog, Registration,
    testing::Values(
        RefusedStart{"AccessDenied", [] { fakeEventLog.createError = 5; }, 0,
                     "The application must be run with administrator privileges"},
        RefusedStart{"NoKey", [] { fakeEventLog.createError = 2; }, 0, "Cannot register event source"},
        RefusedStart{"MessageFile", refuse(L"EventMessageFile"), 0, "Cannot register event source"},
        RefusedStart{"Count", refuse(L"CategoryCount"), 0, "Cannot register event source"},
        RefusedStart{"CategoryFile", refuse(L"CategoryMessageFile"), 0, "Cannot register event source"},
        RefusedStart{"Types", refuse(L"TypesSupported"), 0, "Cannot register event source"},
        RefusedStart{"NoPath", [] { fakeEventLog.path.clear(); }, std::nullopt,
                     "Could not get application path"},
        RefusedStart{"LastError", [] { fakeEventLog.pathError = 122; }, std::nullopt,
                     "Could not get application path"}),
    ByName());

TEST_F(WindowsEventLog, StopsAtTheFirstRefusedValueAndClosesTheKey) {
  fakeEventLog.refusedValue = L"CategoryCount";
  EXPECT_THROW(LoggerEventLogProvider(), LoggerException);
  ASSERT_EQ(fakeEventLog.calls.size(), 5u);
  EXPECT_EQ(fakeEventLog.calls.at(3), L"set CategoryCount = 1");
  EXPECT_EQ(fakeEventLog.calls.at(4), L"close key");
}

TEST_F(WindowsEventLog, ClosesNoKeyThatWasNotMade) {
  fakeEventLog.createError = 5;
  EXPECT_THROW(LoggerEventLogProvider(), LoggerException);
  EXPECT_EQ(fakeEventLog.calls.size(), 1u);
}

struct Kind {
  const char* name;
  std::int32_t level;
  std::wstring numbers;  ///< Type, category and identifier.
};

class EventLevel : public WindowsEventLog, public testing::WithParamInterface<Kind> {};

TEST_P(EventLevel, HasItsTypeAndIdentifier) {
  report(GetParam().level, L"text");
  EXPECT_THAT(fakeEventLog.calls, ElementsAre(L"open Ordan Ovraline",
                                              L"report " + GetParam().numbers + L" text", L"close source"));
}

INSTANTIATE_TEST_SUITE_P(WindowsEventLog, EventLevel,
                         testing::Values(Kind{"Info", 0, L"4 1 " + std::to_wstring(0x40020102u)},
                                         Kind{"Warning", 1, L"2 1 " + std::to_wstring(0x80020101u)},
                                         Kind{"Error", 2, L"1 1 " + std::to_wstring(0xC0020100u)},
                                         Kind{"Five", 5, L"1 1 " + std::to_wstring(0xC0020100u)},
                                         Kind{"Negative", -1, L"1 1 " + std::to_wstring(0xC0020100u)}),
                         ByName());

struct RefusedReport {
  const char* name;
  std::function<void()> arrange;
  std::string text;
  std::size_t calls;  ///< What is opened is closed, whatever came between.
};

class Report : public WindowsEventLog, public testing::WithParamInterface<RefusedReport> {};

TEST_P(Report, FailsWithItsText) {
  GetParam().arrange();
  try {
    report(0, L"text");
    FAIL() << "reported";
  } catch (const LoggerException& failure) {
    EXPECT_EQ(failure.code(), 0);
    EXPECT_EQ(failure.what(), GetParam().text);
  }
  EXPECT_EQ(fakeEventLog.calls.size(), GetParam().calls);
}

INSTANTIATE_TEST_SUITE_P(
    WindowsEventLog, Report,
    testing::Values(
        RefusedReport{"Open", [] { fakeEventLog.opens = false; },
                      "Cannot log event: cannot open event source", 1},
        RefusedReport{"Report", [] { fakeEventLog.reports = false; }, "Cannot log event", 3},
        RefusedReport{"ReportAndClose", [] { fakeEventLog.reports = fakeEventLog.closes = false; },
                      "Cannot log event", 3},
        RefusedReport{"Close", [] { fakeEventLog.closes = false; }, "Error while closing event source", 3}),
    ByName());

}  // namespace
