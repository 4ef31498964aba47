#include "lent_texts.h"

#include <gtest/gtest.h>

#include "known_texts.h"

namespace {

constexpr char kModel[] = "a model";

TEST(LentTexts, HaveWhatWasMadeBefore) {
  std::shared_ptr<KnownTexts> place;
  SharedText before;
  {
    const LentTexts lent(place);
    before = lent.texts()->models.of(kModel);
  }
  const LentTexts lent(place);
  EXPECT_TRUE(lent.texts()->models.of(kModel).isSharedWith(before));
}

TEST(LentTexts, AreGivenBackWithoutWhatNoPictureHas) {
  std::shared_ptr<KnownTexts> place;
  { LentTexts(place).texts()->models.of(kModel); }
  ASSERT_TRUE(place);
  EXPECT_EQ(place->models.size(), 1U) << "the next picture asks for it";
  { const LentTexts lent(place); }
  EXPECT_EQ(place->models.size(), 0U) << "it did not";
}

TEST(LentTexts, AreForOneAtATimeAndTheOtherBeginsWithNone) {
  std::shared_ptr<KnownTexts> place;
  const LentTexts first(place);
  const SharedText text = first.texts()->models.of(kModel);
  const LentTexts second(place);
  EXPECT_NE(second.texts(), first.texts());
  EXPECT_FALSE(second.texts()->models.of(kModel).isSharedWith(text));
}

}  // namespace
