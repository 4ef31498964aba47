#include "state/journal.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace simulator {
namespace {

using Numbers = std::vector<std::size_t>;

constexpr char kOne[] = "{\"volumes\":[1]}\n";
constexpr char kOther[] = "{\"volumes\":[2]}\n";

std::string markOf(const std::string& digest) { return "{\"state\":\"" + digest + "\"}\n"; }

TEST(Digest, IsThatOfTheWholeContent) {
  EXPECT_EQ(digestOf(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
  EXPECT_EQ(digestOf("abc"), "a9993e364706816aba3e25717850c26c9cd0d89d");
}

TEST(JournalTextTest, HoldsTheChangesBehindTheDigest) {
  const JournalText journal(markOf("a") + kOne + kOther);
  EXPECT_EQ(journal.changesOf("a"), (Numbers{2, 3}));
  EXPECT_EQ(journal.line(3), "{\"volumes\":[2]}");
  EXPECT_TRUE(journal.holdsChanges());
  EXPECT_FALSE(journal.isTorn());
}

TEST(JournalTextTest, OfAnotherStateHoldsNoChangesOfThisOne) {
  EXPECT_EQ(JournalText(markOf("a") + kOne).changesOf("b"), std::nullopt);
}

TEST(JournalTextTest, BelongsToAnAnnouncedStateAndToTheOneBefore) {
  const JournalText journal(markOf("a") + kOne + markOf("b") + kOther);
  EXPECT_EQ(journal.changesOf("a"), (Numbers{2, 4}));
  EXPECT_EQ(journal.changesOf("b"), (Numbers{4}));
}

TEST(JournalTextTest, OfAContentThatCameAgainCountsFromTheLastTime) {
  const JournalText journal(markOf("a") + kOne + kOther + markOf("a") + kOne);
  EXPECT_EQ(journal.changesOf("a"), (Numbers{5}));
}

TEST(JournalTextTest, WithoutALineHoldsNothing) {
  EXPECT_FALSE(JournalText("").holdsChanges());
  EXPECT_FALSE(JournalText("").isTorn());
  EXPECT_FALSE(JournalText(markOf("a")).holdsChanges());
  EXPECT_EQ(JournalText(markOf("a")).changesOf("a"), Numbers{});
}

TEST(JournalTextTest, LeavesATornLastLineOut) {
  const std::string whole = markOf("a") + kOne;
  for (const std::string torn : {"{\"volu", "{\"volumes\":[2]}", "\n", "{\"volu\n"}) {
    const JournalText journal(whole + torn);
    EXPECT_TRUE(journal.isTorn()) << torn;
    EXPECT_EQ(journal.wholeSize(), whole.size()) << torn;
    EXPECT_EQ(journal.changesOf("a"), (Numbers{2})) << torn;
  }
  EXPECT_EQ(JournalText(whole + std::string(40, '\0') + "\n").wholeSize(), whole.size());
  EXPECT_EQ(JournalText("{\"sta").wholeSize(), 0U);
}

class JournalTest : public testing::Test {
 protected:
  std::string content() const { return readText(path().c_str()); }
  std::filesystem::path path() const { return (m_folder / "journal").string(); }

  const TemporaryFolder m_folder;
};

TEST_F(JournalTest, IsNotThereBeforeItsFirstLine) {
  Journal journal(path());
  journal.announce("b");
  journal.clear();
  EXPECT_EQ(m_folder.entries(), 0U);
}

TEST_F(JournalTest, BeginsWithTheDigest) {
  Journal journal(path());
  journal.add(kOne, "a");
  journal.add(kOther, "a");
  EXPECT_EQ(content(), markOf("a") + kOne + kOther);
  EXPECT_EQ(journal.size(), content().size());
}

TEST_F(JournalTest, GoesOnBehindItsLastWholeLine) {
  const std::string whole = markOf("a") + kOne;
  writeText(path().c_str(), whole + "{\"volu");
  Journal journal(path(), whole.size());
  journal.add(kOther, "a");
  EXPECT_EQ(content(), whole + kOther);
}

TEST_F(JournalTest, AnnouncesANewStateAndBeginsAgain) {
  Journal journal(path());
  journal.add(kOne, "a");
  journal.announce("b");
  EXPECT_EQ(content(), markOf("a") + kOne + markOf("b"));
  journal.clear();
  EXPECT_EQ(content(), "");
  journal.add(kOther, "b");
  EXPECT_EQ(content(), markOf("b") + kOther);
}

TEST_F(JournalTest, GoesAwayOnlyWhenNothingStandsInIt) {
  Journal journal(path());
  journal.add(kOne, "a");
  journal.remove();
  EXPECT_EQ(m_folder.entries(), 1U);
  journal.clear();
  journal.remove();
  EXPECT_EQ(m_folder.entries(), 0U);
}

}  // namespace
}  // namespace simulator
