#include "identity/token.h"

#include <gtest/gtest.h>

namespace host {

namespace {

TEST(Token, IsMadeOf64HexadecimalDigits) {
  const std::string token = makeToken();
  EXPECT_EQ(token.size(), 64U);
  EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_TRUE(isToken(token));
}

TEST(Token, IsNeverMadeTwice) { EXPECT_NE(makeToken(), makeToken()); }

TEST(Token, ComparesWhole) {
  EXPECT_TRUE(sameToken("abc", "abc"));
  EXPECT_FALSE(sameToken("abd", "abc"));
  EXPECT_FALSE(sameToken("ab", "abc"));
  EXPECT_FALSE(sameToken("abcd", "abc"));
  EXPECT_FALSE(sameToken("", "abc"));
}

TEST(Token, IsLongAndNeedsNoEncoding) {
  EXPECT_TRUE(isToken(std::string(32, 'A')));
  EXPECT_FALSE(isToken(std::string(31, 'A')));
  EXPECT_TRUE(isToken(std::string(256, '~')));
  EXPECT_FALSE(isToken(std::string(257, '~')));
  EXPECT_FALSE(isToken(std::string(32, ' ')));
  EXPECT_FALSE(isToken(std::string(32, '&')));
  EXPECT_FALSE(isToken(std::string(32, '\0')));
}

}  // namespace

}  // namespace host
