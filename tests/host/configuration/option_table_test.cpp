#include "configuration/option_table.h"

#include <gtest/gtest.h>

#include <set>

namespace host {

namespace {

TEST(OptionTable, NamesEveryOptionOnce) {
  std::set<std::string> names;
  for (const Option& option : optionTable()) EXPECT_TRUE(names.insert(option.name).second) << option.name;
}

TEST(OptionTable, HasItsGroupsOneAfterTheOther) {
  OptionGroup last = OptionGroup::kService;
  for (const Option& option : optionTable()) {
    EXPECT_GE(option.group, last) << option.name;
    last = option.group;
  }
}

TEST(OptionTable, TellsDefaultsThatItTakes) {
  for (const Option& option : optionTable()) {
    Options options;
    if (option.defaultText.empty()) continue;
    EXPECT_NO_THROW(option.take(options, option.defaultText)) << option.name;
  }
}

TEST(OptionTable, HelpsInALine) {
  for (const Option& option : optionTable()) {
    EXPECT_FALSE(option.help.empty()) << option.name;
    EXPECT_EQ(option.help.find('\n'), std::string::npos) << option.name;
    EXPECT_NE(option.help.back(), '.') << option.name;
  }
}

TEST(OptionTable, RefusesTheEmptyTextWhereARangeIsTold) {
  for (const Option& option : optionTable()) {
    Options options;
    if (option.range.empty()) continue;
    EXPECT_THROW(option.take(options, ""), ValueError) << option.name;
  }
}

TEST(OptionTable, FindsByTheWholeName) {
  ASSERT_NE(findOption("max-body"), nullptr);
  EXPECT_EQ(findOption("max-body")->name, "max-body");
  EXPECT_EQ(findOption("max-bod"), nullptr);
  EXPECT_EQ(findOption(""), nullptr);
}

}  // namespace

}  // namespace host
