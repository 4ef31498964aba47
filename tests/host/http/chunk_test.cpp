#include "http/chunk.h"

#include <gtest/gtest.h>

#include <string>

namespace host {

namespace {

TEST(Chunks, TellTheirLengthAheadInHexadecimal) {
  EXPECT_EQ(chunkOf("x"), "1\r\nx\r\n");
  EXPECT_EQ(chunkOf("\r\n0\r\n"), "5\r\n\r\n0\r\n\r\n");
  const std::string many(70000, 'x');
  EXPECT_EQ(chunkOf(many), "11170\r\n" + many + "\r\n");
}

TEST(Chunks, NoneIsEmptyAheadOfTheLast) { EXPECT_EQ(chunkOf(""), ""); }

}  // namespace

}  // namespace host
