#include <gtest/gtest.h>

#include "logging/written_console.h"
#include "support/by_name.h"

namespace {

// The locale "C" has the first 256 codes there.
constexpr char kC[] =
    "Mirn is ready\r\ncaf\xE9\r\n5 \\u20AC\r\n5 \xA5\r\na\\u010Ab\r\ndisk \\uD83D\\uDCBE\r\nend\r\n";
constexpr char k1252[] =
    "Mirn is ready\r\ncaf\xE9\r\n5 \x80\r\n5 \xA5\r\na\\u010Ab\r\ndisk \\uD83D\\uDCBE\r\nend\r\n";

class ConsoleStreams : public testing::TestWithParam<ConsoleRow> {};

TEST_P(ConsoleStreams, WriteEscapedWhatTheirLocaleCannotExpress) {
  expectLines(writeConsole(GetParam().locale, GetParam().streams), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Locales, ConsoleStreams,
                         testing::Values(ConsoleRow{"C", "C", kSynchronised, kC},
                                         ConsoleRow{"UnsynchronisedC", "C", kUnsynchronised, kC},
                                         ConsoleRow{"CodePage1252", ".1252", kSynchronised, k1252}),
                         ByName());

TEST(WideConsole, TakesEveryTextAsItIs) {
  std::wstring expected;
  for (const wchar_t* text : kConsoleTexts) expected.append(text).append(L"\r\n");
  const std::string bytes(reinterpret_cast<const char*>(expected.data()), expected.size() * sizeof(wchar_t));
  const WrittenConsole console = writeConsole("C", kWide);
  ASSERT_EQ(console.exitCode, 0);
  EXPECT_EQ(console.output, bytes);
}

}  // namespace
