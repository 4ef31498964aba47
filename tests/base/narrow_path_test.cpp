#include "narrow_path.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "support/temporary_folder.h"

namespace {

TEST(NarrowPath, NamesTheFileThatTheSystemOpensByTheText) {
  const TemporaryFolder folder;
  // "É" in Latin-1's code page, which is no UTF-8; on POSIX any bytes do.
  const std::string text = folder.path().string() + "/\xC9t\xE9";
  std::ofstream(text.c_str()) << "content";
  std::ifstream stream(narrowPath(text));
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "content");
}

TEST(NarrowPath, MayBeEmpty) { EXPECT_TRUE(narrowPath("").empty()); }

}  // namespace
