#include "ascii.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

TEST(IsAscii, HoldsForEveryUnitBelowOneHundredTwentyEight) {
  for (unsigned unit = 0; unit < 128; ++unit) {
    EXPECT_TRUE(isAscii(std::string(1, static_cast<char>(unit)))) << unit;
    EXPECT_TRUE(isAscii(std::wstring(1, static_cast<wchar_t>(unit)))) << unit;
  }
  EXPECT_TRUE(isAscii(std::string_view()));
}

TEST(IsAscii, FailsForEveryOtherByte) {
  for (unsigned byte = 128; byte < 256; ++byte)
    EXPECT_FALSE(isAscii(std::string(1, static_cast<char>(byte)))) << byte;
}

TEST(IsAscii, FailsForWideUnitsWhoseLowByteWouldPass) {
  for (const wchar_t unit : {L'\x80', L'\x0141', L'\x4100', L'\xD83D', L'\xFFFF'}) {
    EXPECT_FALSE(isAscii(std::wstring(1, unit))) << static_cast<unsigned>(unit);
  }
}

TEST(IsAscii, SeesASingleOtherUnitAtAnyPlace) {
  for (std::size_t place = 0; place < 70; ++place) {
    std::string text(70, 'x');
    text[place] = '\xC3';
    EXPECT_FALSE(isAscii(text)) << place;
  }
}

}  // namespace
