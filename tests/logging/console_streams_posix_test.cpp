#include <gtest/gtest.h>

#include "logging/written_console.h"
#include "support/by_name.h"
#include "support/environment.h"

namespace {

constexpr char kAscii[] = "Mirn is ready\ncaf\\u00E9\n5 \\u20AC\na\\u010Ab\ndisk \\uD83D\\uDCBE\nend\n";
constexpr char kUtf8[] =
    "Mirn is ready\ncaf\xC3\xA9\n5 \xE2\x82\xAC\na\xC4\x8A"
    "b\ndisk \\uD83D\\uDCBE\nend\n";
constexpr char kLatin1[] = "Mirn is ready\ncaf\xE9\n5 \\u20AC\na\\u010Ab\ndisk \\uD83D\\uDCBE\nend\n";

/// A locale of Latin-1 for programs started from here on, made of the system's sources where it has them.
class Latin1Locale {
 public:
  Latin1Locale() {
    runProgram("localedef", {"--quiet", "-f", "ISO-8859-1", "-i", "POSIX", (m_folder / "latin1").string()});
    setVariable("LOCPATH", m_folder.path().string());
  }
  Latin1Locale(const Latin1Locale&) = delete;
  Latin1Locale& operator=(const Latin1Locale&) = delete;
  ~Latin1Locale() { unsetVariable("LOCPATH"); }

 private:
  TemporaryFolder m_folder;
};

class ConsoleStreams : public testing::TestWithParam<ConsoleRow> {
 protected:
  const Latin1Locale m_latin1;
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
                                                    kLatin1}),
                         ByName());

}  // namespace
