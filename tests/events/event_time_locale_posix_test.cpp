#include <gtest/gtest.h>

#include <clocale>
#include <fstream>
#include <string>
#include <vector>

#include "event_time.h"
#include "support/by_name.h"
#include "support/environment.h"
#include "support/run_program.h"
#include "support/temporary_folder.h"
#include "support/time_zone.h"
#include "tick_clock.h"

namespace {

/// The process's locale while it lives: one whose dates look so. It is made of the system's tools.
class LocaleOfDates {
 public:
  LocaleOfDates(const std::string& date, const std::string& charset) {
    const std::string source = (m_folder / "source").string();
    std::ofstream(source) << "comment_char %\nescape_char /\n"
                          << "LC_CTYPE\ncopy \"POSIX\"\nEND LC_CTYPE\n"
                          << "LC_TIME\n"
                          << names("abday", 7) << names("day", 7) << names("abmon", 12) << names("mon", 12)
                          << "d_t_fmt \"%c\"\nd_fmt \"" << date << "\"\nt_fmt \"%T\"\n"
                          << "am_pm \"vorm\";\"nachm\"\nt_fmt_ampm \"%I\"\nEND LC_TIME\n";
    runProgram("localedef",
               {"--quiet", "--force", "-f", charset, "-i", source, (m_folder / "dates").string()});
    setVariable("LOCPATH", m_folder.path().string());
    m_isThere = std::setlocale(LC_TIME, "dates") && std::setlocale(LC_CTYPE, "dates");
  }
  LocaleOfDates(const LocaleOfDates&) = delete;
  LocaleOfDates& operator=(const LocaleOfDates&) = delete;
  ~LocaleOfDates() {
    std::setlocale(LC_ALL, "C");
    unsetVariable("LOCPATH");
  }

  bool isThere() const { return m_isThere; }

 private:
  /// A keyword with as many names as it wants.
  static std::string names(const std::string& keyword, int count) {
    std::string line = keyword;
    for (int name = 0; name < count; ++name)
      line += (name == 0 ? " \"" : ";\"") + keyword + std::to_string(name) + '"';
    return line + "\n";
  }

  TemporaryFolder m_folder;
  bool m_isThere = false;
};

struct Row {
  const char* name;
  const char* date;  ///< As the locale's source has it.
  const char* charset;
  std::wstring text;
};

class EventTimeInALocale : public testing::TestWithParam<Row> {};

TEST_P(EventTimeInALocale, HasTheDateOfThatLocale) {
  const TimeZone zone("UTC");
  const LocaleOfDates locale(GetParam().date, GetParam().charset);
  if (!locale.isThere()) GTEST_SKIP() << "no locale can be made";
  EXPECT_EQ(eventTimeText(1'000'047'845 * kTicksPerSecond), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Events, EventTimeInALocale,
    testing::Values(Row{"Another", "%d.%m.%Y", "ISO-8859-1", L"09.09.2001 03:04:05 nachm"},
                    Row{"Names", "%b", "ISO-8859-1", L"abmon8 03:04:05 nachm"},
                    Row{"LetterOfOneByte", "%d<U00A0>%m", "ISO-8859-1", L"09\u00A009 03:04:05 nachm"},
                    Row{"LetterOfTwoBytes", "%d<U00A0>%m", "UTF-8", L"09\u00A009 03:04:05 nachm"},
                    // 25 bytes and the terminating zero
                    Row{"LongestPossible", "%Y-%m-%d", "ISO-8859-1", L"2001-09-09 03:04:05 nachm"},
                    Row{"OneByteTooLong", "%Y-%m-%d.", "ISO-8859-1", L""},
                    Row{"MuchTooLong", "%A, %d %B %Y", "ISO-8859-1", L""},
                    // 25 letters in more bytes
                    Row{"BytesTooLong", "%m<U00A0>%d<U00A0>%Y", "UTF-8", L""}),
    ByName());

}  // namespace
