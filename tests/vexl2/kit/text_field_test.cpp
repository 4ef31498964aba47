#include "text_field.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace vexl2 {
namespace {

TEST(TextField, IsFilledToItsEnd) {
  char field[6];
  std::memset(field, 'x', sizeof(field));
  putText(field, "ab");
  EXPECT_EQ(std::string(field, 6), std::string("ab\0\0\0\0", 6));
  EXPECT_EQ(textOf(field), "ab");
}

TEST(TextField, EndsInANulHoweverLongTheText) {
  char field[4];
  putText(field, "abcdef");
  EXPECT_STREQ(field, "abc");
}

TEST(TextField, CutsNoCharacterInTwo) {
  char field[4];
  putText(field, "ab\xC3\xA4");
  EXPECT_STREQ(field, "ab");
  putText(field,
          "a\xC3\xA4"
          "b");
  EXPECT_STREQ(field, "a\xC3\xA4");
  putText(field, "\xF0\x9F\x90\xA7");
  EXPECT_STREQ(field, "");
}

TEST(TextField, MayBeFullWithoutANul) {
  const char field[4] = {'a', 'b', 'c', 'd'};
  EXPECT_EQ(textOf(field), "abcd");
}

}  // namespace
}  // namespace vexl2
