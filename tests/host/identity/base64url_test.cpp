#include "identity/base64url.h"

#include <gtest/gtest.h>

namespace host {

namespace {

std::string encoded(const std::string& bytes) {
  return base64url(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

TEST(Base64url, IsWrittenWithoutPadding) {
  // The vectors of RFC 4648, section 10.
  EXPECT_EQ(encoded(""), "");
  EXPECT_EQ(encoded("f"), "Zg");
  EXPECT_EQ(encoded("fo"), "Zm8");
  EXPECT_EQ(encoded("foo"), "Zm9v");
  EXPECT_EQ(encoded("foob"), "Zm9vYg");
  EXPECT_EQ(encoded("fooba"), "Zm9vYmE");
  EXPECT_EQ(encoded("foobar"), "Zm9vYmFy");
}

TEST(Base64url, HasItsOwnTwoLastDigits) { EXPECT_EQ(encoded("\xFB\xEF\xBE\xFF\xFF\xFF"), "----____"); }

TEST(Base64url, TakesManyBytes) {
  EXPECT_EQ(encoded(std::string(32, '\0')), std::string(43, 'A'));
  EXPECT_EQ(encoded(std::string(33, '\xFF')), std::string(44, '_'));
}

TEST(RandomText, HoldsAllItsBytesAndIsNeverTheSame) {
  EXPECT_EQ(randomText(16).size(), 22U);
  EXPECT_NE(randomText(16), randomText(16));
}

}  // namespace

}  // namespace host
