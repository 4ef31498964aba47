#include "stored_setting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/by_name.h"
#include "support/locate_timeout_logs.h"
#include "support/log_lines.h"
#include "support/machine_settings.h"

// A row that is no setting of the plug-in: all that the mechanism knows of one stands in it.

namespace {

using testing::IsEmpty;

PluginSetting fanSpeed() {
  PluginSetting row = kLocateTimeoutSetting;
  row.storeName = L"FanSpeed";
  row.byDefault = 50;
  row.least = 0;
  row.most = 100;
  row.defaultTaken = L"Fan speed is not legal and will be set to default";
  return row;
}

constexpr char kDefaultTaken[] = "Warning: Fan speed is not legal and will be set to default";

struct StoredCase {
  const char* name;
  const wchar_t* storedName;
  std::uint32_t stored;
  std::int64_t value;
  std::vector<std::string> logged;
};

class StoredSetting : public testing::TestWithParam<StoredCase> {
 protected:
  MachineSettings m_settings;
  LogLines m_log;
};

TEST_P(StoredSetting, IsReadByItsRow) {
  m_settings.store(GetParam().storedName, GetParam().stored);
  const std::string before = m_settings.image();
  EXPECT_EQ(readSetting(fanSpeed()), GetParam().value);
  EXPECT_EQ(m_log.take(), GetParam().logged);
  EXPECT_EQ(m_settings.image(), before) << "nothing is written back";
}

INSTANTIATE_TEST_SUITE_P(
    Values, StoredSetting,
    testing::Values(StoredCase{"Least", L"FanSpeed", 0, 0, {}}, StoredCase{"Most", L"FanSpeed", 100, 100, {}},
                    StoredCase{"OverMost", L"FanSpeed", 101, 50, {kDefaultTaken}},
                    StoredCase{"OfAnotherSetting", L"LedLocateTimeout", 30, 50, {kUnreadable}}),
    ByName());

TEST(StoringASetting, HoldsTheValueToTheBoundsOfItsRow) {
  const MachineSettings settings;
  EXPECT_FALSE(storeSetting(fanSpeed(), -1));
  EXPECT_FALSE(storeSetting(fanSpeed(), 101));
  EXPECT_EQ(settings.image(), "") << "the store is not touched";
}

TEST(StoringASetting, LeavesItsNeighbourAlone) {
  MachineSettings settings;
  settings.store(L"LedLocateTimeout", 30);
  const LogLines log;
  EXPECT_TRUE(storeSetting(fanSpeed(), 0));
  EXPECT_EQ(readSetting(fanSpeed()), 0);
  EXPECT_TRUE(storeSetting(fanSpeed(), 100));
  EXPECT_EQ(readSetting(fanSpeed()), 100);
  EXPECT_EQ(readSetting(kLocateTimeoutSetting), 30);
}

TEST(StoringASetting, GoesToTheKeyOfItsRow) {
  MachineSettings settings;
  settings.store(L"FanSpeed", 30);
  const LogLines log;
  PluginSetting elsewhere = fanSpeed();
  elsewhere.storeKey = L"SYSTEM\\Elsewhere";
  EXPECT_EQ(readSetting(elsewhere), 50);
  EXPECT_EQ(readSetting(fanSpeed()), 30);
}

}  // namespace
