#include "identity/token.h"

#include <gtest/gtest.h>

namespace host {

namespace {

TEST(Token, IsMadeOf256BitsBehindThePrefix) {
  const std::string token = makeToken();
  EXPECT_EQ(token.substr(0, 5), "mirn_");
  EXPECT_EQ(token.size(), 5U + 43U);  // 43 digits of six bits
  EXPECT_TRUE(isToken(token));
}

TEST(Token, IsNeverMadeTwice) { EXPECT_NE(makeToken(), makeToken()); }

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
