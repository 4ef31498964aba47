#include "manual/manual_pages.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "configuration/option_table.h"
#include "troff.h"

namespace host {

namespace {

TEST(ManualPages, OfTheProgramHasEveryOption) {
  const std::string page = programPage("2026-01-31");
  for (const Option& option : optionTable()) {
    const std::size_t place = page.find(".TP\n\\fB" + escapedForTroff("--" + option.name) + "\\fR");
    ASSERT_EQ(place != std::string::npos, option.isForLine()) << option.name;
    if (!option.isForLine()) continue;
    EXPECT_NE(page.find(escapedForTroff(option.help), place), std::string::npos) << option.name;
  }
}

TEST(ManualPages, OfTheFileHasEveryKeyAndNoOther) {
  const std::string page = configurationPage("2026-01-31");
  for (const Option& option : optionTable()) {
    const bool isThere = page.find("\n\\fB" + escapedForTroff(option.name) + " =\\fR") != std::string::npos;
    EXPECT_EQ(isThere, option.isForFile()) << option.name;
  }
}

/// The headings that have something under them.
std::vector<std::string> headingsOf(const std::string& page) {
  std::vector<std::string> headings;
  std::istringstream lines(page);
  std::string heading;
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind(".SH \"", 0) == 0) {
      heading = line.substr(5, line.size() - 6);
    } else if (!heading.empty()) {
      headings.push_back(std::exchange(heading, {}));
    }
  }
  return headings;
}

TEST(ManualPages, HaveSomethingUnderEachHeading) {
  EXPECT_EQ(headingsOf(programPage("2026-01-31")),
            (std::vector<std::string>{"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "COMMANDS", "EXIT STATUS",
                                      "FILES", "SEE ALSO"}));
  EXPECT_EQ(headingsOf(configurationPage("2026-01-31")),
            (std::vector<std::string>{"NAME", "SYNOPSIS", "DESCRIPTION", "KEYS", "EXAMPLE", "SEE ALSO"}));
}

TEST(ManualPages, TellRangesAndDefaults) {
  const std::string page = configurationPage("2026-01-31");
  EXPECT_NE(page.find("; from 1 to 1073741824; otherwise 20000."), std::string::npos);
  EXPECT_NE(page.find("\\fBport =\\fR \\fIPORT\\fR"), std::string::npos);
  EXPECT_NE(page.find("\\fBinsecure =\\fR \\fIyes|no\\fR"), std::string::npos);
}

}  // namespace

}  // namespace host
