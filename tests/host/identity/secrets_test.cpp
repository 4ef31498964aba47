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

TEST(Secrets, AreComparedWhole) {
  EXPECT_TRUE(sameHash("abc", "abc"));
  EXPECT_FALSE(sameHash("abd", "abc"));
  EXPECT_FALSE(sameHash("xbc", "abc"));
  EXPECT_FALSE(sameHash("ab", "abc"));
  EXPECT_FALSE(sameHash("", "abc"));
}

}  // namespace

}  // namespace host
