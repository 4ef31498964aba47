#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "mirn_session.h"
#include "stored_setting.h"
#include "support/by_name.h"
#include "support/locate_timeout_logs.h"
#include "support/log_lines.h"
#include "support/private_registry_windows.h"
#include "support/restricted_key_windows.h"

// What only a registry can hold.

namespace {

using testing::ElementsAre;

constexpr wchar_t kName[] = L"LedLocateTimeout";

struct OtherType {
  const char* name;
  DWORD type;
  std::string data;
};

class ValueOfAnotherType : public testing::TestWithParam<OtherType> {
 protected:
  PrivateRegistry m_registry;
  LogLines m_log;
};

TEST_P(ValueOfAnotherType, LeavesTheDefaultAndIsReplacedByANumber) {
  const std::string& data = GetParam().data;
  m_registry.store(kDriverKey, kName, GetParam().type, data.data(), static_cast<DWORD>(data.size()));
  EXPECT_EQ(readSetting(kLocateTimeoutSetting), 12);
  EXPECT_THAT(m_log.take(), ElementsAre(kUnreadable));
  EXPECT_TRUE(storeSetting(kLocateTimeoutSetting, 60));
  EXPECT_EQ(readSetting(kLocateTimeoutSetting), 60);
}

INSTANTIATE_TEST_SUITE_P(Registry, ValueOfAnotherType,
                         testing::Values(OtherType{"Text", REG_SZ, std::string("3\0\0\0\0\0", 6)},
                                         OtherType{"Bytes", REG_BINARY, std::string("\36\0\0\0", 4)},
                                         OtherType{"EightBytes", REG_QWORD,
                                                   std::string("\36\0\0\0\0\0\0\0", 8)}),
                         ByName());

TEST(LocateTimeoutInTheRegistry, IsNotMadeWithoutTheDriversKey) {
  const PrivateRegistry registry;
  const LogLines log;
  EXPECT_FALSE(MirnSession().setLocateTimeout(60));
  EXPECT_EQ(registry.image(), "");
}

TEST(LocateTimeoutInTheRegistry, IsRefusedToACallerWithoutRightsToWrite) {
  PrivateRegistry registry;
  const DWORD stored = 30;
  registry.store(kDriverKey, kName, REG_DWORD, &stored, sizeof stored);
  const std::string before = registry.image();
  {
    const RestrictedKey restricted(kDriverKey, RestrictedKey::Rights::kRead);
    MirnSession session;
    EXPECT_EQ(session.getLocateTimeout(), 30);
    EXPECT_FALSE(session.setLocateTimeout(60));
  }
  EXPECT_EQ(registry.image(), before);
}

TEST(LocateTimeoutInTheRegistry, IsTwelveSecondsForACallerWithoutRightsToRead) {
  PrivateRegistry registry;
  const DWORD stored = 30;
  registry.store(kDriverKey, kName, REG_DWORD, &stored, sizeof stored);
  LogLines log;
  const RestrictedKey restricted(kDriverKey, RestrictedKey::Rights::kNone);
  EXPECT_EQ(readSetting(kLocateTimeoutSetting), 12);
  EXPECT_THAT(log.take(), ElementsAre(kUnreadable));
}

}  // namespace
