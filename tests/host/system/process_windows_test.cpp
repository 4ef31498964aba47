#include "system/process_windows.h"

#include <gtest/gtest.h>

#include "process_start_windows.h"
#include "support/by_name.h"

namespace host {

namespace {

using Words = std::vector<std::string>;

struct LineRow {
  std::string name;
  Words arguments;
};

class CommandLineTest : public testing::TestWithParam<LineRow> {};

TEST_P(CommandLineTest, IsReadAsItWasMeant) {
  const std::wstring line = commandLineOf("C:\\Program Files\\x y\\host.exe", GetParam().arguments);
  EXPECT_EQ(argumentsOn(line), GetParam().arguments);
}

INSTANTIATE_TEST_SUITE_P(Words, CommandLineTest,
                         testing::Values(LineRow{"None", {}}, LineRow{"Plain", {"service", "run"}},
                                         LineRow{"Empty", {"", "x", ""}},
                                         LineRow{"Blank", {"--config=C:\\a b\\host.conf"}},
                                         LineRow{"EndsInBackslash", {"C:\\a b\\", "x"}},
                                         LineRow{"EndsInBackslashes", {"C:\\\\", "x"}},
                                         LineRow{"Quote", {"a\"b", "\"", "x"}},
                                         LineRow{"QuoteBehindBackslashes", {"a\\\\\"b", "\\\"", "x"}},
                                         LineRow{"BackslashesInside", {"\\\\server\\share"}},
                                         LineRow{"AnyCharacter", {"größe €", "\xF0\x9F\x92\xBE"}}),
                         ByName());

TEST(CommandLine, BeginsWithTheWholeProgram) {
  EXPECT_EQ(commandLineOf("C:\\a b\\h.exe", {"x"}), L"\"C:\\a b\\h.exe\" \"x\"");
}

TEST(ProgramFile, IsThisTest) {
  EXPECT_EQ(programFile().filename(), "host_unit_test.exe");
  EXPECT_TRUE(programFile().is_absolute());
}

}  // namespace

}  // namespace host
