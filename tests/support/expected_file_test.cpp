#include "support/expected_file.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/temporary_folder.h"

namespace {

const std::string kText = "one\ntwo\nthree\n";

TEST(FirstDifference, IsNoneBetweenEqualTexts) {
  EXPECT_EQ(firstDifference(kText, kText), "");
  EXPECT_EQ(firstDifference("", ""), "");
}

TEST(FirstDifference, TellsTheChangedLine) {
  EXPECT_EQ(firstDifference(kText, "one\ntvo\nthree\n"), "line 2\n  expected: two\n  actual:   tvo");
  EXPECT_EQ(firstDifference(kText, "One\ntwo\nthree\n"), "line 1\n  expected: one\n  actual:   One");
}

TEST(FirstDifference, TellsALineThatIsMissingOrTooMuch) {
  EXPECT_EQ(firstDifference(kText, "one\nthree\n"), "line 2\n  expected: two\n  actual:   three");
  EXPECT_EQ(firstDifference(kText, "one\ntwo\n"), "line 3\n  expected: three\n  actual:   (the end)");
  EXPECT_EQ(firstDifference(kText, kText + "four\n"), "line 4\n  expected: (the end)\n  actual:   four");
  EXPECT_EQ(firstDifference("", "one\n"), "line 1\n  expected: (the end)\n  actual:   one");
}

TEST(FirstDifference, TellsALongerLine) {
  EXPECT_EQ(firstDifference("two\n", "twofold\n"), "line 1\n  expected: two\n  actual:   twofold");
}

TEST(FirstDifference, TellsOtherLineEnds) {
  EXPECT_EQ(firstDifference("one\n", "one\r\n"), "line 1\n  expected: one\n  actual:   one\\r");
  EXPECT_EQ(firstDifference("one\n", "one"), "line 1\n  expected: one\n  actual:   (the end)");
}

TEST(ExpectedFile, KeepsEveryByte) {
  const TemporaryFolder folder;
  const std::string path = (folder / "text").string();
  const std::string text("lines\nof\r\nevery\n\x1a kind\0and none", 29);
  writeExpectedFile(path, text);
  EXPECT_EQ(readExpectedFile(path), text);
}

TEST(ExpectedFile, MustBeThere) {
  const TemporaryFolder folder;
  EXPECT_THROW(readExpectedFile((folder / "text").string()), std::runtime_error);
  EXPECT_THROW(writeExpectedFile((folder / "none/text").string(), "text"), std::runtime_error);
}

}  // namespace
