#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "mirn_session.h"
#include "scripted_library/scripted_library.h"
#include "support/by_name.h"
#include "support/log_lines.h"
#include "support/ordinary_user.h"
#include "support/settings_file.h"

namespace {

namespace fs = boost::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kKey = "[SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device]\n";

constexpr char kUnreadable[] = "Warning: Could not read Mirn Plugin configuration to permission denied";
constexpr char kOutOfRange[] =
    "Warning: Timeout value exceeds legal values in the configuration and will be set to default";

struct StoredCase {
  const char* name;
  std::string content;
  std::int64_t seconds;
  std::vector<std::string> logged;
};

class StoredLocateTimeout : public testing::TestWithParam<StoredCase> {
 protected:
  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  SettingsFile m_settings{GetParam().content};
  LogLines m_log;
};

TEST_P(StoredLocateTimeout, IsReadWhenTheSessionIsMade) {
  MirnSession session;
  EXPECT_EQ(session.getLocateTimeout(), GetParam().seconds);
  EXPECT_EQ(m_log.take(), GetParam().logged);
  EXPECT_EQ(m_settings.text(), GetParam().content) << "nothing is written back";
  EXPECT_THAT(m_library.callTexts(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Files, StoredLocateTimeout,
    testing::Values(StoredCase{"Zero", kKey + "LedLocateTimeout=0\n", 12, {kOutOfRange}},
                    StoredCase{"Least", kKey + "LedLocateTimeout=1\n", 1, {}},
                    StoredCase{"Default", kKey + "LedLocateTimeout=12\n", 12, {}},
                    StoredCase{"Most", kKey + "LedLocateTimeout=3600\n", 3600, {}},
                    StoredCase{"OverMost", kKey + "LedLocateTimeout=3601\n", 12, {kOutOfRange}},
                    StoredCase{"AsLargeAsCanBe", kKey + "LedLocateTimeout=4294967295\n", 12, {kOutOfRange}},
                    StoredCase{
                        "TooLargeForTheStore", kKey + "LedLocateTimeout=4294967296\n", 12, {kUnreadable}},
                    StoredCase{"NoNumber", kKey + "LedLocateTimeout=soon\n", 12, {kUnreadable}},
                    StoredCase{"OtherValueAlone", kKey + "LedLocateTime=60\n", 12, {kUnreadable}},
                    StoredCase{"OtherKeyAlone", "[SYSTEM]\nLedLocateTimeout=60\n", 12, {kUnreadable}},
                    StoredCase{"EmptyFile", "", 12, {kUnreadable}}),
    ByName());

class LocateTimeout : public testing::Test {
 protected:
  void givenStored(std::int64_t seconds) {
    m_settings.write(kKey + "LedLocateTimeout=" + std::to_string(seconds) + "\n");
  }

  SettingsFile m_settings;
  LogLines m_log;
};

TEST_F(LocateTimeout, IsTwelveSecondsWithoutAFile) {
  MirnSession session;
  EXPECT_EQ(session.getLocateTimeout(), 12);
  EXPECT_THAT(m_log.take(), ElementsAre(kUnreadable));
  EXPECT_FALSE(m_settings.exists());
}

TEST_F(LocateTimeout, GoesToTheStoreAtOnceAndToTheSessionWithTheNextOne) {
  givenStored(30);
  MirnSession session;
  EXPECT_TRUE(session.setLocateTimeout(60));
  EXPECT_EQ(m_settings.text(), kKey + "LedLocateTimeout=60\n");
  EXPECT_EQ(session.getLocateTimeout(), 30);
  EXPECT_EQ(MirnSession().getLocateTimeout(), 60);
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(LocateTimeout, TakesBothBounds) {
  givenStored(30);
  MirnSession session;
  EXPECT_TRUE(session.setLocateTimeout(1));
  EXPECT_EQ(MirnSession().getLocateTimeout(), 1);
  EXPECT_TRUE(session.setLocateTimeout(3600));
  EXPECT_EQ(MirnSession().getLocateTimeout(), 3600);
}

TEST_F(LocateTimeout, OutOfRangeIsRefusedWithoutTouchingTheStore) {
  givenStored(30);
  MirnSession session;
  const std::string before = m_settings.text();
  const auto lastChange = fs::last_write_time(m_settings.path());
  using Limits = std::numeric_limits<std::int64_t>;
  for (const std::int64_t seconds : {Limits::min(), std::int64_t{-1}, std::int64_t{0}, std::int64_t{3601},
                                     (std::int64_t{1} << 32) + 60, Limits::max()}) {
    EXPECT_FALSE(session.setLocateTimeout(seconds)) << seconds;
  }
  EXPECT_EQ(m_settings.text(), before);
  EXPECT_EQ(fs::last_write_time(m_settings.path()), lastChange);
}

TEST_F(LocateTimeout, OutOfRangeDoesNotMakeAFile) {
  MirnSession session;
  EXPECT_FALSE(session.setLocateTimeout(3601));
  EXPECT_FALSE(m_settings.exists());
}

TEST_F(LocateTimeout, MakesTheFileThatIsMissing) {
  MirnSession session;
  EXPECT_TRUE(session.setLocateTimeout(60));
  EXPECT_EQ(MirnSession().getLocateTimeout(), 60);
}

TEST_F(LocateTimeout, IsRefusedToACallerWithoutRightsToWrite) {
  givenStored(30);
  fs::permissions(m_settings.folder().path(), static_cast<fs::perms>(0555));
  fs::permissions(m_settings.path(), static_cast<fs::perms>(0444));
  const OrdinaryUser ordinary;
  MirnSession session;
  EXPECT_EQ(session.getLocateTimeout(), 30);
  EXPECT_FALSE(session.setLocateTimeout(60));
  EXPECT_EQ(m_settings.text(), kKey + "LedLocateTimeout=30\n");
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(LocateTimeout, IsTwelveSecondsForACallerWithoutRightsToRead) {
  givenStored(30);
  fs::permissions(m_settings.path(), fs::no_perms);
  const OrdinaryUser ordinary;
  EXPECT_EQ(MirnSession().getLocateTimeout(), 12);
  EXPECT_THAT(m_log.take(), ElementsAre(kUnreadable));
}

}  // namespace
