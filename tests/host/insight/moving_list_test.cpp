#include "insight/moving_list.h"

#include <gmock/gmock.h>

namespace host {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Thing {
  std::int64_t rank;
  std::string id;
};

insight::ListPlace placeOf(const Thing& thing) { return {thing.rank, 7, thing.id}; }

class MovingListTest : public testing::Test {
 protected:
  /// The ids of the next page.
  std::vector<std::string> turn(std::size_t limit) {
    const auto page = pageOf(m_things, placeOf, limit, m_next);
    m_next = page.next;
    std::vector<std::string> ids;
    for (const Thing& thing : page.items) ids.push_back(thing.id);
    return ids;
  }

  std::vector<Thing> m_things{{2, "c"}, {1, "b"}, {1, "a"}, {2, "d.e"}};
  std::string m_next;
};

TEST_F(MovingListTest, IsInTheOrderOfItsPlaces) {
  EXPECT_THAT(turn(4), ElementsAre("a", "b", "c", "d.e"));
  EXPECT_EQ(m_next, "");
}

TEST_F(MovingListTest, GoesOnBehindThePageBefore) {
  EXPECT_THAT(turn(1), ElementsAre("a"));
  EXPECT_THAT(turn(2), ElementsAre("b", "c"));
  EXPECT_THAT(turn(2), ElementsAre("d.e"));
  EXPECT_EQ(m_next, "");
}

TEST_F(MovingListTest, NothingIsLeftOutWhenOthersGo) {
  EXPECT_THAT(turn(3), ElementsAre("a", "b", "c"));
  m_things = {{2, "d.e"}};
  EXPECT_THAT(turn(3), ElementsAre("d.e"));
}

TEST_F(MovingListTest, NothingIsToldTwiceWhenOthersCome) {
  EXPECT_THAT(turn(2), ElementsAre("a", "b"));
  m_things.push_back({0, "worst"});
  EXPECT_THAT(turn(9), ElementsAre("c", "d.e"));
}

TEST_F(MovingListTest, IsEmptyWhereNothingIsLeft) {
  turn(3);
  m_things.clear();
  EXPECT_THAT(turn(1), IsEmpty());
  EXPECT_EQ(m_next, "");
}

TEST_F(MovingListTest, ACursorOfAnotherListIsNone) {
  m_next = "t1.2.a";
  EXPECT_THROW(turn(1), insight::BadCursor);
}

}  // namespace

}  // namespace host
