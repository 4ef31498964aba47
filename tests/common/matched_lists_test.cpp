#include "matched_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "common/named.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using List = std::vector<Named>;
using Places = std::vector<std::size_t>;

constexpr std::size_t kNone = 1000;

/// An object for each letter.
List listOf(const std::wstring& ids) {
  List list;
  for (const wchar_t id : ids) list.emplace_back(std::wstring(1, id));
  return list;
}

/// For each new object the place of the old one; `kNone` where it has none.
Places matches(const List& before, const List& after) {
  const MatchedLists matched(before, after);
  Places places;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const Named* const old = matched.before(i);
    places.push_back(old == nullptr ? kNone : static_cast<std::size_t>(old - before.data()));
  }
  return places;
}

Places matches(const std::wstring& before, const std::wstring& after) {
  return matches(listOf(before), listOf(after));
}

/// The places of the old objects that are gone.
Places gone(const List& before, const List& after) {
  const MatchedLists matched(before, after);
  Places places;
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (matched.isGone(i)) places.push_back(i);
  }
  return places;
}

Places gone(const std::wstring& before, const std::wstring& after) {
  return gone(listOf(before), listOf(after));
}

TEST(MatchedLists, OfEqualListsMatchesEachWithItsLike) {
  EXPECT_THAT(matches(L"abc", L"abc"), ElementsAre(0, 1, 2));
  EXPECT_THAT(gone(L"abc", L"abc"), IsEmpty());
  const List shared = listOf(L"abc");
  EXPECT_THAT(matches(shared, shared), ElementsAre(0, 1, 2));
}

TEST(MatchedLists, OfEmptyListsHasNothingToMatch) {
  EXPECT_THAT(matches(L"", L""), IsEmpty());
  EXPECT_THAT(matches(L"", L"ab"), ElementsAre(kNone, kNone));
  EXPECT_THAT(gone(L"ab", L""), ElementsAre(0, 1));
}

TEST(MatchedLists, FindsWhatHasMoved) {
  EXPECT_THAT(matches(L"abcd", L"dcba"), ElementsAre(3, 2, 1, 0));
  EXPECT_THAT(matches(L"abcd", L"cdab"), ElementsAre(2, 3, 0, 1));
  EXPECT_THAT(gone(L"abcd", L"cdab"), IsEmpty());
}

TEST(MatchedLists, GoesOnBehindWhatIsGoneAndWhatIsNew) {
  EXPECT_THAT(matches(L"abcd", L"acd"), ElementsAre(0, 2, 3));
  EXPECT_THAT(gone(L"abcd", L"acd"), ElementsAre(1));
  EXPECT_THAT(matches(L"abcd", L"abxcd"), ElementsAre(0, 1, kNone, 2, 3));
  EXPECT_THAT(gone(L"abcd", L"abxcd"), IsEmpty());
  EXPECT_THAT(matches(L"abcd", L"xyz"), ElementsAre(kNone, kNone, kNone));
  EXPECT_THAT(gone(L"abcd", L"xyz"), ElementsAre(0, 1, 2, 3));
}

TEST(MatchedLists, TakesTheFirstOldObjectOfAnIdWhereverItStands) {
  EXPECT_THAT(matches(L"aab", L"ab"), ElementsAre(0, 2));
  EXPECT_THAT(matches(L"aba", L"aba"), ElementsAre(0, 1, 0));
  EXPECT_THAT(matches(L"abb", L"abb"), ElementsAre(0, 1, 1));
}

TEST(MatchedLists, MatchesEachNewObjectOfAnId) {
  EXPECT_THAT(matches(L"ab", L"aab"), ElementsAre(0, 0, 1));
  EXPECT_THAT(matches(L"ab", L"aba"), ElementsAre(0, 1, 0));
  EXPECT_THAT(gone(L"ab", L"aa"), ElementsAre(1));
}

TEST(MatchedLists, OfSeveralOldObjectsWithOneIdAllStayOrNone) {
  EXPECT_THAT(gone(L"abab", L"a"), ElementsAre(1, 3));
  EXPECT_THAT(gone(L"abab", L"xx"), ElementsAre(0, 1, 2, 3));
}

TEST(MatchedLists, TellsIdsApartThatBeginOrEndAlike) {
  const List before = {Named(L"10"), Named(L"1"), Named(L""), Named(L"01")};
  const List after = {Named(L"1"), Named(L"1 "), Named(L"01"), Named(L"10"), Named(L"")};
  EXPECT_THAT(matches(before, after), ElementsAre(1, kNone, 3, 0, 2));
}

/// What is meant, said in the plainest way.
Places plainMatches(const List& before, const List& after) {
  Places places;
  for (const Named& object : after) {
    std::size_t place = 0;
    while (place < before.size() && before[place].id() != object.id()) ++place;
    places.push_back(place == before.size() ? kNone : place);
  }
  return places;
}

Places plainlyGone(const List& before, const List& after) {
  Places places;
  for (std::size_t i = 0; i < before.size(); ++i) {
    bool stays = false;
    for (const Named& object : after) stays = stays || object.id() == before[i].id();
    if (!stays) places.push_back(i);
  }
  return places;
}

TEST(MatchedLists, SaysOfAnyListsWhatAPlainSearchSays) {
  std::mt19937 random(17);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  for (int round = 0; round < 2000; ++round) {
    const std::size_t ids = 1 + below(12);
    const auto draw = [&] {
      std::wstring drawn;
      for (std::size_t left = below(12); left > 0; --left) drawn += static_cast<wchar_t>(L'a' + below(ids));
      return drawn;
    };
    const List before = listOf(draw());
    const List after = listOf(draw());
    ASSERT_EQ(matches(before, after), plainMatches(before, after)) << round;
    ASSERT_EQ(gone(before, after), plainlyGone(before, after)) << round;
  }
}

}  // namespace
