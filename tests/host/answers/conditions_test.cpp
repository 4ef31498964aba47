#include <gtest/gtest.h>

#include "answers/entity_tag.h"
#include "answers/preferences.h"
#include "support/by_name.h"

namespace host {

namespace {

struct TagRow {
  std::string name;
  std::string list;
  bool isWeaklyNamed;
  bool isStronglyNamed;
};

class ListsOfTags : public testing::TestWithParam<TagRow> {};

TEST_P(ListsOfTags, NameOneOrNot) {
  const std::string tag = R"("a,b")";
  EXPECT_EQ(namesTag(GetParam().list, tag, TagComparison::kWeak), GetParam().isWeaklyNamed);
  EXPECT_EQ(namesTag(GetParam().list, tag, TagComparison::kStrong), GetParam().isStronglyNamed);
}

INSTANTIATE_TEST_SUITE_P(
    Lists, ListsOfTags,
    testing::Values(TagRow{"Alone", R"("a,b")", true, true}, TagRow{"Weak", R"(W/"a,b")", true, false},
                    TagRow{"SmallW", R"(w/"a,b")", false, false},
                    TagRow{"Among", R"("x" ,, W/"y",	"a,b")", true, true},
                    TagRow{"Any", " * ", true, true}, TagRow{"AnyAmong", R"("x", *)", false, false},
                    TagRow{"Another", R"("a")", false, false}, TagRow{"NotQuoted", "a,b", false, false},
                    TagRow{"NotEnded", R"("a,b)", false, false}, TagRow{"Empty", "", false, false}),
    ByName());

struct PreferRow {
  std::string name;
  std::optional<std::string> field;
  std::optional<int> seconds;
};

class Preferences : public testing::TestWithParam<PreferRow> {};

TEST_P(Preferences, TellHowLongAClientWaits) {
  const auto wait = waitIn(GetParam().field);
  ASSERT_EQ(wait.has_value(), GetParam().seconds.has_value());
  if (wait) {
    EXPECT_EQ(wait->count(), *GetParam().seconds);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Fields, Preferences,
    testing::Values(PreferRow{"Missing", {}, {}}, PreferRow{"Wait", "wait=7", 7},
                    PreferRow{"None", "wait=0", 0}, PreferRow{"Long", "wait=61", 60},
                    PreferRow{"VeryLong", "wait=99999999999999999999999999", 60},
                    PreferRow{"Among", "respond-async, Wait = 10 ; foo=bar, handling=lenient", 10},
                    PreferRow{"Quoted", R"(wait="5")", 5}, PreferRow{"First", "wait=3, wait=9", 3},
                    PreferRow{"InAText", R"(foo="a, wait=5", bar)", {}}, PreferRow{"NoNumber", "wait=x", {}},
                    PreferRow{"Negative", "wait=-1", {}}, PreferRow{"Fraction", "wait=1.5", {}},
                    PreferRow{"Bare", "wait", {}}, PreferRow{"Empty", "", {}}),
    ByName());

}  // namespace

}  // namespace host
