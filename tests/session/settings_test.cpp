#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "mirn_session.h"
#include "scripted_library/scripted_library.h"
#include "support/by_name.h"
#include "support/default_settings.h"
#include "support/locate_timeout_logs.h"
#include "support/log_lines.h"

namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

struct StoredCase {
  const char* name;
  std::uint32_t stored;
  std::int64_t seconds;
  std::vector<std::string> logged;
};

class StoredLocateTimeout : public testing::TestWithParam<StoredCase> {
 protected:
  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  DefaultSettings m_settings{kLocateTimeoutSetting};
  LogLines m_log;
};

TEST_P(StoredLocateTimeout, IsReadWhenTheSessionIsMade) {
  m_settings.store(L"LedLocateTimeout", GetParam().stored);
  const std::string before = m_settings.image();
  MirnSession session;
  EXPECT_EQ(session.getLocateTimeout(), GetParam().seconds);
  EXPECT_EQ(m_log.take(), GetParam().logged);
  EXPECT_EQ(m_settings.image(), before) << "nothing is written back";
  EXPECT_THAT(m_library.callTexts(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Values, StoredLocateTimeout,
                         testing::Values(StoredCase{"Zero", 0, 12, {kOutOfRange}},
                                         StoredCase{"Least", 1, 1, {}}, StoredCase{"Default", 12, 12, {}},
                                         StoredCase{"Most", 3600, 3600, {}},
                                         StoredCase{"OverMost", 3601, 12, {kOutOfRange}},
                                         StoredCase{"AsLargeAsCanBe", 4294967295U, 12, {kOutOfRange}}),
                         ByName());

constexpr std::int64_t kOutside[] = {
    std::numeric_limits<std::int64_t>::min(), -1, 0, 3601, (std::int64_t{1} << 32) + 60,
    std::numeric_limits<std::int64_t>::max()};

class LocateTimeout : public testing::Test {
 protected:
  void givenStored(std::uint32_t seconds) { m_settings.store(L"LedLocateTimeout", seconds); }

  static std::int64_t readAnew() { return MirnSession().getLocateTimeout(); }

  DefaultSettings m_settings{kLocateTimeoutSetting};
  LogLines m_log;
};

TEST(LocateTimeoutWithoutAKey, IsTwelveSeconds) {
  const MachineSettings settings;
  LogLines log;
  EXPECT_EQ(MirnSession().getLocateTimeout(), 12);
  EXPECT_THAT(log.take(), AllOf(Not(IsEmpty()), Each(kUnreadable))) << "a line for each setting";
  EXPECT_EQ(settings.image(), "") << "nothing is made";
}

TEST(LocateTimeoutWithoutAKey, OutOfRangeMakesNone) {
  const MachineSettings settings;
  const LogLines log;
  MirnSession session;
  for (const std::int64_t seconds : kOutside) EXPECT_FALSE(session.setLocateTimeout(seconds)) << seconds;
  EXPECT_EQ(settings.image(), "");
}

TEST_F(LocateTimeout, IsTwelveSecondsWithoutTheValue) {
  m_settings.store(L"LedLocateTime", 60);
  EXPECT_EQ(readAnew(), 12);
  EXPECT_THAT(m_log.take(), ElementsAre(kUnreadable));
}

TEST_F(LocateTimeout, GoesToTheStoreAtOnceAndToTheSessionWithTheNextOne) {
  givenStored(30);
  const std::string before = m_settings.image();
  MirnSession session;
  EXPECT_TRUE(session.setLocateTimeout(60));
  EXPECT_NE(m_settings.image(), before);
  EXPECT_EQ(session.getLocateTimeout(), 30);
  EXPECT_EQ(readAnew(), 60);
  EXPECT_THAT(m_log.take(), IsEmpty());
}

TEST_F(LocateTimeout, TakesBothBounds) {
  givenStored(30);
  MirnSession session;
  EXPECT_TRUE(session.setLocateTimeout(1));
  EXPECT_EQ(readAnew(), 1);
  EXPECT_TRUE(session.setLocateTimeout(3600));
  EXPECT_EQ(readAnew(), 3600);
}

TEST_F(LocateTimeout, OutOfRangeIsRefusedAndChangesNothing) {
  givenStored(30);
  MirnSession session;
  const std::string before = m_settings.image();
  for (const std::int64_t seconds : kOutside) EXPECT_FALSE(session.setLocateTimeout(seconds)) << seconds;
  EXPECT_EQ(m_settings.image(), before);
}

}  // namespace
