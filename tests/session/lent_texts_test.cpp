#include "lent_texts.h"

#include <gtest/gtest.h>

#include <string_view>

#include "known_texts.h"

namespace {

constexpr std::string_view kText = "a text";

TEST(LentTexts, HaveWhatWasMadeBeforeAndIsInUse) {
  std::shared_ptr<KnownTexts> place;
  SharedText inUse;
  {
    const LentTexts lent(place);
    inUse = lent.texts()->text(kText);
  }
  const LentTexts lent(place);
  EXPECT_TRUE(lent.texts()->text(kText).isSharedWith(inUse));
}

TEST(LentTexts, AreGivenBackWithoutWhatNobodyUses) {
  std::shared_ptr<KnownTexts> place;
  {
    const LentTexts lent(place);
    lent.texts()->text(kText);
  }
  ASSERT_TRUE(place);
  EXPECT_EQ(place->size(), 0U);
}

TEST(LentTexts, AreForOneAtATimeAndTheOtherBeginsWithNone) {
  std::shared_ptr<KnownTexts> place;
  const LentTexts first(place);
  const SharedText text = first.texts()->text(kText);
  const LentTexts second(place);
  EXPECT_NE(second.texts(), first.texts());
  EXPECT_FALSE(second.texts()->text(kText).isSharedWith(text));
}

}  // namespace
