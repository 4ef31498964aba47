#include "sorted_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

struct Numbered {
  int number;
  char name;
};

bool operator==(const Numbered& one, const Numbered& other) {
  return one.number == other.number && one.name == other.name;
}

constexpr auto kNumberOf = [](const Numbered& element) { return element.number; };

std::vector<Numbered> sorted(std::vector<Numbered> list) {
  sortStablyBy(kNumberOf, list);
  return list;
}

TEST(SortStablyBy, OrdersByTheKeyAndKeepsTheOrderOfElementsWithOneKey) {
  EXPECT_THAT(sorted({{2, 'a'}, {1, 'b'}, {2, 'c'}, {1, 'd'}}),
              ElementsAre(Numbered{1, 'b'}, Numbered{1, 'd'}, Numbered{2, 'a'}, Numbered{2, 'c'}));
}

TEST(SortStablyBy, LeavesAListInOrderAsItIs) {
  EXPECT_THAT(sorted({}), ElementsAre());
  EXPECT_THAT(sorted({{1, 'a'}, {1, 'b'}, {2, 'c'}}),
              ElementsAre(Numbered{1, 'a'}, Numbered{1, 'b'}, Numbered{2, 'c'}));
}

/// An element that notes whether it was ever moved.
struct Resting {
  explicit Resting(int theNumber) : number(theNumber) {}
  Resting(Resting&& other) noexcept : number(other.number), wasMoved(true) {}
  Resting& operator=(Resting&& other) noexcept {
    number = other.number;
    wasMoved = true;
    return *this;
  }
  ~Resting() = default;

  int number;
  bool wasMoved = false;
};

TEST(SortStablyBy, MovesNothingOfAListInOrder) {
  std::vector<Resting> list;
  list.reserve(3);
  for (const int number : {1, 2, 2}) list.emplace_back(number);
  sortStablyBy([](const Resting& element) { return element.number; }, list);
  for (const Resting& element : list) EXPECT_FALSE(element.wasMoved) << element.number;
}

TEST(FindFirstBy, GivesTheFirstOfSeveralWithTheKey) {
  const std::vector<Numbered> list = {{1, 'a'}, {2, 'b'}, {2, 'c'}, {5, 'd'}};
  EXPECT_EQ(findFirstBy(kNumberOf, list, 2), &list[1]);
  EXPECT_EQ(findFirstBy(kNumberOf, list, 5), &list[3]);
}

TEST(FindFirstBy, GivesNullForAKeyThatNoneHas) {
  const std::vector<Numbered> list = {{1, 'a'}, {5, 'd'}};
  for (const int key : {0, 3, 6}) EXPECT_EQ(findFirstBy(kNumberOf, list, key), nullptr) << key;
  EXPECT_EQ(findFirstBy(kNumberOf, std::vector<Numbered>(), 1), nullptr);
}

}  // namespace
