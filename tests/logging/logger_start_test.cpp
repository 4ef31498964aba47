#include <gtest/gtest.h>

#include "logger.h"
#include "logging/fake_event_log_api.h"

namespace {

using ovra::Logger;

void expectStartFails(const std::string& text) {
  try {
    Logger::instance();
    FAIL() << "started";
  } catch (const ovra::LoggerException& failure) {
    EXPECT_EQ(failure.code(), 0);
    EXPECT_EQ(failure.what(), text);
  }
}

TEST(LoggerStart, IsTriedAgainByTheNextCallAfterAFailure) {
  fakeEventLog.createError = 5;
  expectStartFails("The application must be run with administrator privileges");

  fakeEventLog = {};
  fakeEventLog.refusedValue = L"TypesSupported";
  expectStartFails("Cannot register event source");

  fakeEventLog = {};
  fakeEventLog.path.clear();
  expectStartFails("Unable to start logging service");

  fakeEventLog = {};
  auto& logger = Logger::instance();
  EXPECT_EQ(fakeEventLog.calls.size(), 7u) << "one registration";
  EXPECT_EQ(&Logger::instance(), &logger);
  EXPECT_EQ(fakeEventLog.calls.size(), 7u) << "no further one";
}

}  // namespace
