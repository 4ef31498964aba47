#include "revisions/kept_answers.h"

#include <gtest/gtest.h>

namespace host {

namespace {

constexpr std::size_t kMost = 1048576;

ovra::PluginPosition at(std::uint64_t revision) { return {L"0123456789abcdef", revision, 0, 0}; }

MadeAnswer answerOf(const std::string& bytes, std::uint64_t revision) {
  return {std::make_shared<const Answer>(jsonAnswer(bytes)), at(revision)};
}

class KeptAnswersTest : public testing::Test {
 protected:
  std::string keptBytes(const std::string& question, std::uint64_t revision) {
    const auto kept = m_answers.look(question, at(revision));
    return kept ? kept->answer->body.text() : "none";
  }

  KeptAnswers m_answers{kMost};
};

TEST_F(KeptAnswersTest, AreOfOneRevision) {
  m_answers.keep("a", answerOf("1", 1));
  EXPECT_EQ(keptBytes("a", 1), "1");
  EXPECT_EQ(keptBytes("a", 2), "none");
  EXPECT_EQ(keptBytes("b", 1), "none");
  m_answers.keep("a", answerOf("2", 2));
  m_answers.keep("a", answerOf("1", 1));
  EXPECT_EQ(keptBytes("a", 2), "2") << "an older one comes too late";
  ovra::PluginPosition other = at(2);
  other.epoch = L"fedcba9876543210";
  EXPECT_EQ(m_answers.look("a", other), nullptr);
}

TEST_F(KeptAnswersTest, AreBoundedUnderTenThousandQuestions) {
  for (int i = 0; i < 10000; ++i) {
    m_answers.keep("question " + std::to_string(i), answerOf(std::string(1000, 'x'), 1));
    ASSERT_LE(m_answers.bytes(), kMost);
  }
  EXPECT_GT(m_answers.bytes(), kMost - 4096) << "and not for want of answers";
  EXPECT_NE(keptBytes("question 9999", 1), "none");
  EXPECT_EQ(keptBytes("question 0", 1), "none");
}

TEST_F(KeptAnswersTest, TheOneNotAskedForTheLongestGoes) {
  const std::string half(kMost / 2 - 4096, 'x');
  m_answers.keep("a", answerOf(half, 1));
  m_answers.keep("b", answerOf(half, 1));
  EXPECT_EQ(keptBytes("a", 1), half);
  m_answers.keep("c", answerOf(half, 1));
  EXPECT_EQ(keptBytes("a", 1), half);
  EXPECT_EQ(keptBytes("b", 1), "none");
}

TEST_F(KeptAnswersTest, OneThatIsTooLargeIsNotKept) {
  m_answers.keep("a", answerOf("1", 1));
  m_answers.keep("b", answerOf(std::string(kMost, 'x'), 1));
  EXPECT_EQ(keptBytes("b", 1), "none");
  EXPECT_EQ(keptBytes("a", 1), "1");
}

TEST_F(KeptAnswersTest, AnAnswerMayBeAsLargeAsTheBound) {
  m_answers.keep("", answerOf("1", 1));
  const std::size_t most = kMost - (m_answers.bytes() - 1);
  m_answers.keep("", answerOf(std::string(most + 1, 'x'), 2));
  EXPECT_EQ(keptBytes("", 2), "none");
  m_answers.keep("", answerOf(std::string(most, 'x'), 3));
  EXPECT_EQ(keptBytes("", 3).size(), most);
}

TEST_F(KeptAnswersTest, ABoundOfNoneKeepsNothing) {
  KeptAnswers none(0);
  none.keep("a", answerOf("1", 1));
  EXPECT_EQ(none.look("a", at(1)), nullptr);
}

TEST_F(KeptAnswersTest, OneMakesAndTheOthersWait) {
  std::vector<std::string> given;
  const auto onMade = [&](const MadeAnswer& made) { given.push_back(made.answer->body.text()); };
  EXPECT_TRUE(m_answers.find("a", at(1), onMade).isMaker);
  EXPECT_FALSE(m_answers.find("a", at(1), onMade).isMaker);
  EXPECT_TRUE(m_answers.find("a", at(2), onMade).isMaker) << "who asks later wants no older answer";
  EXPECT_TRUE(given.empty());
  m_answers.made("a", at(1), answerOf("1", 1));
  EXPECT_EQ(given, (std::vector<std::string>{"1", "1"}));
  EXPECT_TRUE(m_answers.find("a", at(1), onMade).isMaker) << "it was not kept";
}

}  // namespace

}  // namespace host
