#include "text_sequence.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "known_text.h"

namespace {

/// The text of a number, which counts how often one is made and searched. There are four hashes.
class Counted {
 public:
  using Source = unsigned;
  static constexpr unsigned kRefused = 1000000;
  inline static unsigned made = 0;
  inline static unsigned hashed = 0;

  explicit Counted(Source number) : m_number(number) {
    if (number == kRefused) throw std::range_error("bad conversion");
    ++made;
    m_text = std::to_wstring(number);
  }

  bool isMadeOf(Source number) const { return m_number == number; }
  static std::size_t hashOf(Source number) {
    ++hashed;
    return number % 4;
  }
  std::size_t hash() const { return m_number % 4; }
  const SharedText& text() const { return m_text; }

 private:
  SharedText m_text;
  unsigned m_number;
};

class TextSequenceTest : public testing::Test {
 protected:
  TextSequenceTest() { Counted::made = Counted::hashed = 0; }

  /// One picture: asks for these in turn, and holds what it was given until the next.
  void ask(const std::vector<unsigned>& numbers) {
    std::vector<SharedText> picture;
    for (const unsigned number : numbers) {
      picture.push_back(m_texts.of(number));
      EXPECT_EQ(picture.back().text(), std::to_wstring(number));
    }
    m_texts.startOver();
    m_picture = std::move(picture);
  }

  TextSequence<Counted> m_texts;
  std::vector<SharedText> m_picture;
};

TEST_F(TextSequenceTest, MakesEachOnce) {
  ask({5, 6, 5, 7, 6});
  EXPECT_EQ(Counted::made, 3U);
  EXPECT_TRUE(m_picture[2].isSharedWith(m_picture[0]));
  EXPECT_TRUE(m_picture[4].isSharedWith(m_picture[1]));
  EXPECT_EQ(m_texts.size(), 3U);
}

TEST_F(TextSequenceTest, SearchesNothingThatIsAskedForInTheSameOrderAgain) {
  ask({1, 2, 3, 4, 5});
  const auto before = m_picture;
  Counted::made = Counted::hashed = 0;
  ask({1, 2, 3, 4, 5});
  EXPECT_EQ(Counted::made, 0U);
  EXPECT_EQ(Counted::hashed, 0U);
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_TRUE(m_picture[i].isSharedWith(before[i]));
}

TEST_F(TextSequenceTest, SearchesNothingThatIsLikeTheOneBefore) {
  ask({1, 1, 1, 2, 2});
  EXPECT_EQ(Counted::hashed, 2U);
  Counted::hashed = 0;
  ask({1, 1, 1, 2, 2});
  EXPECT_EQ(Counted::hashed, 0U);
}

TEST_F(TextSequenceTest, SearchesNothingThatIsAskedForASecondTimeWhereTheLastPictureDid) {
  for (const auto& order :
       {std::vector<unsigned>{1, 2, 3, 4, 1, 2, 3, 4}, {1, 2, 1, 2, 1, 2}, {3, 2, 1, 3, 1, 2, 3}}) {
    ask(order);
    Counted::hashed = 0;
    ask(order);
    EXPECT_EQ(Counted::hashed, 0U);
  }
}

TEST_F(TextSequenceTest, FindsWhatIsAskedForASecondTimeElsewhere) {
  ask({1, 2, 3, 4, 2, 3, 1});
  Counted::made = 0;
  ask({1, 2, 3, 4, 3, 1, 4, 4, 2});
  ask({2, 1, 2, 4, 2, 3});
  ask({4});
  EXPECT_EQ(Counted::made, 0U);
}

TEST_F(TextSequenceTest, TakesUpTheOrderOfTheLastPicture) {
  ask({1, 2, 3, 4, 5, 6});
  for (const auto& order :
       {std::vector<unsigned>{6, 5, 4, 3, 2, 1}, {2, 3, 4, 5, 6, 1}, {1, 3, 5, 2, 4, 6}}) {
    Counted::made = 0;
    ask(order);
    EXPECT_EQ(Counted::made, 0U);
    Counted::hashed = 0;
    ask(order);
    EXPECT_EQ(Counted::hashed, 0U);
  }
}

TEST_F(TextSequenceTest, MakesOfAnotherListWhatIsNewAlone) {
  ask({1, 2, 3, 4, 5, 6});
  Counted::made = 0;
  ask({1, 9, 2, 4, 5, 10, 6});
  EXPECT_EQ(Counted::made, 2U);
  Counted::hashed = 0;
  ask({1, 9, 2, 4, 5, 10, 6});
  EXPECT_EQ(Counted::hashed, 0U);
}

TEST_F(TextSequenceTest, LetsGoOfWhatThePictureDidNotAskForWhenNobodyElseHasIt) {
  ask({1, 2, 3, 4});
  const SharedText held = m_picture[2];
  m_picture.clear();
  ask({4, 1});
  EXPECT_EQ(m_texts.size(), 3U) << "2 is let go of, 3 is in use";
  Counted::made = 0;
  EXPECT_TRUE(m_texts.of(3).isSharedWith(held));
  EXPECT_EQ(Counted::made, 0U);
  m_texts.of(2);
  EXPECT_EQ(Counted::made, 1U);
}

TEST_F(TextSequenceTest, LetsGoOfWhatALeapOfTheLastPictureLedOver) {
  ask({1, 2, 3, 4, 3});
  m_picture.clear();
  ask({3});
  EXPECT_EQ(m_texts.size(), 1U);
}

TEST_F(TextSequenceTest, KeepsWhatThePictureHasAskedForUntilTheNext) {
  m_texts.of(1);
  m_texts.startOver();
  EXPECT_EQ(m_texts.size(), 1U);
  m_texts.startOver();
  EXPECT_EQ(m_texts.size(), 0U);
}

TEST_F(TextSequenceTest, KeepsThousandsApartWhateverTheirOrder) {
  constexpr unsigned kCount = 2000;
  std::vector<unsigned> numbers;
  for (unsigned i = 0; i < kCount; ++i) numbers.push_back(i * 7 % kCount);
  ask(numbers);
  std::sort(numbers.begin(), numbers.end());
  ask(numbers);
  EXPECT_EQ(Counted::made, kCount);
  EXPECT_EQ(m_texts.size(), kCount);
}

TEST_F(TextSequenceTest, GoesOnAfterATextThatCannotBeMade) {
  ask({1, 2, 3});
  EXPECT_EQ(m_texts.of(1).text(), L"1");
  EXPECT_THROW(m_texts.of(Counted::kRefused), std::range_error);
  EXPECT_EQ(m_texts.size(), 3U);
  Counted::hashed = 0;
  EXPECT_EQ(m_texts.of(2).text(), L"2");
  EXPECT_EQ(m_texts.of(3).text(), L"3");
  EXPECT_EQ(Counted::hashed, 0U);
}

TEST(TextSequence, ReadsAFieldUpToItsSize) {
  TextSequence<PlainText> texts;
  const char field[3] = {'a', 'b', 'c'};
  EXPECT_EQ(texts.of(field).text(), L"abc");
}

}  // namespace
