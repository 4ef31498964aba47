#include "system/report.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace host {

namespace {

TEST(Report, LinesGoToWhoeverGetsThemToo) {
  std::vector<std::pair<LineKind, std::string>> lines;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  tellLinesTo([&lines](LineKind kind, const std::string& line) { lines.emplace_back(kind, line); });
  announce("Serving");
  report("a failure");
  writeToErrors("{}");
  tellLinesTo(nullptr);
  announce("Alone");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Serving\nAlone\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "mirn-host: a failure\n{}\n");
  EXPECT_EQ(lines, (std::vector<std::pair<LineKind, std::string>>{{LineKind::kAnnouncement, "Serving"},
                                                                  {LineKind::kReport, "a failure"},
                                                                  {LineKind::kLog, "{}"}}));
}

}  // namespace

}  // namespace host
