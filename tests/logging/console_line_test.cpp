#include "console_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/by_name.h"
#include "support/temporary_folder.h"

namespace {

using ovra::log::consolePrefix;
using ovra::log::writeConsoleLine;

std::tm secondOfMarch() {
  std::tm time{};
  time.tm_year = 2024 - 1900;
  time.tm_mon = 2;
  time.tm_mday = 2;
  time.tm_hour = 23;
  time.tm_min = 4;
  time.tm_sec = 5;
  return time;
}

struct Prefix {
  const char* name;
  std::int32_t level;
  std::wstring text;
};

class ConsolePrefix : public testing::TestWithParam<Prefix> {};

TEST_P(ConsolePrefix, HasTheTimeDayFirstWithDashesAndTheWord) {
  EXPECT_EQ(consolePrefix(static_cast<LogLevel>(GetParam().level), secondOfMarch()), GetParam().text);
}

TEST_P(ConsolePrefix, IsEmptyWithoutATime) {
  EXPECT_EQ(consolePrefix(static_cast<LogLevel>(GetParam().level), boost::none), L"");
}

INSTANTIATE_TEST_SUITE_P(Console, ConsolePrefix,
                         testing::Values(Prefix{"Error", 2, L"[02-03-2024 23-04-05] Error: "},
                                         Prefix{"Warning", 1, L"[02-03-2024 23-04-05] Warning: "},
                                         Prefix{"Five", 5, L"[02-03-2024 23-04-05] Warning: "},
                                         Prefix{"Negative", -1, L"[02-03-2024 23-04-05] Warning: "}),
                         ByName());

/// Counts flushes; refuses what is not ASCII once, as a console may.
class ConsoleBuffer : public std::wstringbuf {
 public:
  int flushes = 0;

 protected:
  int sync() override {
    ++flushes;
    return 0;
  }

  std::streamsize xsputn(const wchar_t* text, std::streamsize count) override {
    for (std::streamsize index = 0; index < count; ++index) {
      if (static_cast<std::uint32_t>(text[index]) > 0x7F) return 0;
    }
    return std::wstringbuf::xsputn(text, count);
  }
};

TEST(ConsoleLine, EndsInALineEndAndIsFlushed) {
  ConsoleBuffer buffer;
  std::wostream stream(&buffer);
  writeConsoleLine(stream, L"text");
  EXPECT_EQ(buffer.str(), L"text\n");
  EXPECT_EQ(buffer.flushes, 1);
}

TEST(ConsoleLine, GoesOutEscapedWhenTheStreamRefusesIt) {
  ConsoleBuffer buffer;
  std::wostream stream(&buffer);
  writeConsoleLine(stream, L"1 \x20AC");
  writeConsoleLine(stream, L"next");
  EXPECT_EQ(buffer.str(), L"1 \\u20AC\nnext\n");
  EXPECT_TRUE(stream.good());
}

TEST(ConsoleLine, IsWrittenToAStreamThatSomeoneLeftFailed) {
  std::wostringstream stream;
  stream.setstate(std::ios::failbit | std::ios::badbit);
  writeConsoleLine(stream, L"text \x20AC");
  EXPECT_EQ(stream.str(), L"text \x20AC\n");
}

TEST(ConsoleLine, DoesNotStopUpAFileWhoseLocaleCannotExpressIt) {
  const TemporaryFolder folder;
  const auto path = folder / "console";
  std::wofstream stream(path.c_str(), std::ios::binary);
  stream.imbue(std::locale::classic());
  writeConsoleLine(stream, L"1 \x20AC");
  writeConsoleLine(stream, L"");
  writeConsoleLine(stream, L"next");
  EXPECT_TRUE(stream.good());
  EXPECT_EQ(readText(path), "1 \\u20AC\n\nnext\n");
}

}  // namespace
