#include "health/cause.h"

#include <gtest/gtest.h>

namespace {

using insight::Cause;
using insight::Severity;
using insight::severityWord;

TEST(CauseId, IsKindAndObject) {
  Cause cause;
  cause.kind = "disk-failed";
  cause.object = {"disk", L"123", L"Disk 1"};
  EXPECT_EQ(cause.id(), "disk-failed-123");
}

TEST(CauseId, IsTheKindAloneWhereTheServiceItselfIsMeant) {
  Cause cause;
  cause.kind = "picture-old";
  cause.object = {"service", L"", L""};
  EXPECT_EQ(cause.id(), "picture-old");
}

TEST(Severities, RiseFromOkToCriticalWithTheUnknownAheadOfTheLast) {
  EXPECT_LT(Severity::kOk, Severity::kInfo);
  EXPECT_LT(Severity::kInfo, Severity::kWarning);
  EXPECT_LT(Severity::kWarning, Severity::kUnknown);
  EXPECT_LT(Severity::kUnknown, Severity::kCritical);
}

TEST(Severities, HaveWords) {
  EXPECT_EQ(severityWord(Severity::kOk), "ok");
  EXPECT_EQ(severityWord(Severity::kInfo), "info");
  EXPECT_EQ(severityWord(Severity::kWarning), "warning");
  EXPECT_EQ(severityWord(Severity::kUnknown), "unknown");
  EXPECT_EQ(severityWord(Severity::kCritical), "critical");
}

}  // namespace
