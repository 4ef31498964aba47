#include "bundle/bundled_configuration.h"

#include <gtest/gtest.h>

#include <boost/json/serialize.hpp>

#include "configuration/option_table.h"

namespace host {

namespace {

TEST(BundledConfiguration, HasEachBoundByTheNameOfItsOption) {
  const auto form = bundledConfiguration({});
  for (const Option& option : optionTable()) {
    if (option.group != OptionGroup::kBounds) continue;
    ASSERT_TRUE(form.contains(option.name)) << option.name;
    EXPECT_EQ(form.at(option.name).to_number<double>(), std::stod(option.defaultText)) << option.name;
  }
}

TEST(BundledConfiguration, HasNumbersAndSwitchesOfOptionsAlone) {
  for (const auto& [name, value] : bundledConfiguration({})) {
    ASSERT_NE(findOption(name), nullptr) << name;
    EXPECT_TRUE(value.is_number() || value.is_bool()) << name;
  }
}

TEST(BundledConfiguration, TellsWhatWasChosen) {
  Options options;
  options.port = 9090;
  options.insecure = true;
  options.limits.headerTime = std::chrono::milliseconds(1500);
  const auto form = bundledConfiguration(options);
  EXPECT_EQ(form.at("port").to_number<int>(), 9090);
  EXPECT_EQ(form.at("insecure").as_bool(), true);
  EXPECT_EQ(form.at("header-timeout").to_number<double>(), 1.5);
}

}  // namespace

}  // namespace host
