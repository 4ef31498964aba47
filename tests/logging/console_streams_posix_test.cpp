#include <gtest/gtest.h>

#include "logging/written_console.h"
#include "support/by_name.h"
#include "support/environment.h"

namespace {

constexpr char kAscii[] =
    "Mirn is ready\ncaf\\u00E9\n5 \\u20AC\n5 \\u00A5\na\\u010Ab\ndisk \\uD83D\\uDCBE\nend\n";
constexpr char kUtf8[] =
    "Mirn is ready\ncaf\xC3\xA9\n5 \xE2\x82\xAC\n5 \xC2\xA5\na\xC4\x8A"
    "b\ndisk \\uD83D\\uDCBE\nend\n";
constexpr char kLatin1[] = "Mirn is ready\ncaf\xE9\n5 \\u20AC\n5 \xA5\na\\u010Ab\ndisk \\uD83D\\uDCBE\nend\n";
/// A yen is written as a backslash there, which is read as a backslash.
constexpr char kEucJp[] =
    "Mirn is ready\ncaf\x8F\xAB\xB1\n5 \\u20AC\n5 \\u00A5\na\x8F\xAA\xAF"
    "b\ndisk \\uD83D\\uDCBE\nend\n";

/// Locales of other tables for programs started from here on, made of the system's sources where it has them.
class OtherLocales {
 public:
  OtherLocales() {
    make("ISO-8859-1", "latin1");
    make("EUC-JP", "eucjp");
    setVariable("LOCPATH", m_folder.path().string());
  }
  OtherLocales(const OtherLocales&) = delete;
  OtherLocales& operator=(const OtherLocales&) = delete;
  ~OtherLocales() { unsetVariable("LOCPATH"); }

 private:
  void make(const std::string& table, const std::string& name) const {
    runProgram("localedef", {"--quiet", "-f", table, "-i", "POSIX", (m_folder / name).string()});
  }

  TemporaryFolder m_folder;
};

class ConsoleStreams : public testing::TestWithParam<ConsoleRow> {
 protected:
  const OtherLocales m_others;
};

TEST_P(ConsoleStreams, WriteEscapedWhatTheirLocaleCannotExpress) {
  const WrittenConsole console = writeConsole(GetParam().locale, GetParam().streams);
  if (console.exitCode == kNoSuchLocale) GTEST_SKIP() << "no locale " << GetParam().locale;
  expectLines(console, GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Locales, ConsoleStreams,
                         testing::Values(ConsoleRow{"C", "C", kSynchronised, kAscii},
                                         ConsoleRow{"UnsynchronisedC", "C", kUnsynchronised, kAscii},
                                         ConsoleRow{"Utf8", "C.UTF-8", kSynchronised, kUtf8},
                                         ConsoleRow{"UnsynchronisedUtf8", "C.UTF-8", kUnsynchronised, kUtf8},
                                         ConsoleRow{"Latin1", "latin1", kSynchronised, kLatin1},
                                         ConsoleRow{"UnsynchronisedLatin1", "latin1", kUnsynchronised,
                                                    kLatin1},
                                         ConsoleRow{"EucJp", "eucjp", kSynchronised, kEucJp},
                                         ConsoleRow{"UnsynchronisedEucJp", "eucjp", kUnsynchronised, kEucJp}),
                         ByName());

}  // namespace
