#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mirn_session.h"
#include "stored_setting.h"
#include "support/by_name.h"
#include "support/locate_timeout_logs.h"
#include "support/log_lines.h"
#include "support/ordinary_user.h"
#include "support/settings_file.h"

// What only a file can hold, and the rights on it.

namespace {

namespace fs = boost::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kKey = "[SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device]\n";

struct FileCase {
  const char* name;
  std::string content;
};

class SettingsWithoutATimeout : public testing::TestWithParam<FileCase> {
 protected:
  const SettingsFile m_settings{GetParam().content};
  LogLines m_log;
};

TEST_P(SettingsWithoutATimeout, LeaveTheDefault) {
  EXPECT_EQ(readSetting(kLocateTimeoutSetting), 12);
  EXPECT_THAT(m_log.take(), ElementsAre(kUnreadable));
  EXPECT_EQ(m_settings.text(), GetParam().content);
}

INSTANTIATE_TEST_SUITE_P(Files, SettingsWithoutATimeout,
                         testing::Values(FileCase{"TooLarge", kKey + "LedLocateTimeout=4294967296\n"},
                                         FileCase{"NoNumber", kKey + "LedLocateTimeout=soon\n"},
                                         FileCase{"OtherKey", "[SYSTEM]\nLedLocateTimeout=60\n"},
                                         FileCase{"Empty", ""}),
                         ByName());

class LocateTimeoutInAFile : public testing::Test {
 protected:
  SettingsFile m_settings;
  LogLines m_log;
};

TEST_F(LocateTimeoutInAFile, OutOfRangeDoesNotTouchTheFile) {
  m_settings.write(kKey + "LedLocateTimeout=30\n");
  const auto lastChange = fs::last_write_time(m_settings.path());
  EXPECT_FALSE(MirnSession().setLocateTimeout(3601));
  EXPECT_EQ(fs::last_write_time(m_settings.path()), lastChange);
}

TEST_F(LocateTimeoutInAFile, MakesTheFileThatIsMissing) {
  MirnSession session;
  EXPECT_TRUE(session.setLocateTimeout(60));
  EXPECT_EQ(m_settings.text(), kKey + "LedLocateTimeout=60\n");
  EXPECT_EQ(MirnSession().getLocateTimeout(), 60);
}

TEST_F(LocateTimeoutInAFile, IsRefusedToACallerWithoutRightsToWrite) {
  m_settings.write(kKey + "LedLocateTimeout=30\n");
  fs::permissions(m_settings.folder().path(), static_cast<fs::perms>(0555));
  fs::permissions(m_settings.path(), static_cast<fs::perms>(0444));
  const OrdinaryUser ordinary;
  EXPECT_EQ(readSetting(kLocateTimeoutSetting), 30);
  EXPECT_FALSE(storeSetting(kLocateTimeoutSetting, 60));
  EXPECT_EQ(m_settings.text(), kKey + "LedLocateTimeout=30\n");
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(LocateTimeoutInAFile, IsTwelveSecondsForACallerWithoutRightsToRead) {
  m_settings.write(kKey + "LedLocateTimeout=30\n");
  fs::permissions(m_settings.path(), fs::no_perms);
  const OrdinaryUser ordinary;
  EXPECT_EQ(readSetting(kLocateTimeoutSetting), 12);
  EXPECT_THAT(m_log.take(), ElementsAre(kUnreadable));
}

}  // namespace
