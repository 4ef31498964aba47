#include "identity/secrets.h"

#include <gtest/gtest.h>

namespace host {

namespace {

TEST(Secrets, AreHashed) {
  EXPECT_EQ(sha256Hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(sha256Hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256Hex(std::string(1000000, 'a')),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
  EXPECT_EQ(sha256Hex("").size(), kHashDigits);
}

/// The vectors of RFC 4231, cases 2 and 6.
TEST(Secrets, SignTexts) {
  EXPECT_EQ(hmacSha256Hex("Jefe", "what do ya want for nothing?"),
            "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
  EXPECT_EQ(hmacSha256Hex(std::string(131, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First"),
            "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54");
}

TEST(Secrets, AreComparedWhole) {
  EXPECT_TRUE(sameHash("abc", "abc"));
  EXPECT_FALSE(sameHash("abd", "abc"));
  EXPECT_FALSE(sameHash("xbc", "abc"));
  EXPECT_FALSE(sameHash("ab", "abc"));
  EXPECT_FALSE(sameHash("", "abc"));
}

}  // namespace

}  // namespace host
