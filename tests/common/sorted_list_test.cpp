#include "sorted_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

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

TEST(SortStablyBy, OrdersElementsThatCanBeMovedAlone) {
  std::vector<std::unique_ptr<int>> list;
  for (const int number : {3, 1, 2}) list.push_back(std::make_unique<int>(number));
  sortStablyBy([](const std::unique_ptr<int>& element) { return *element; }, list);
  EXPECT_THAT(list, ElementsAre(testing::Pointee(1), testing::Pointee(2), testing::Pointee(3)));
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

TEST(OrderedSearch, FindsInAnyOrderWhatFindFirstByFinds) {
  const std::vector<Numbered> list = {{1, 'a'}, {2, 'b'}, {2, 'c'}, {2, 'd'}, {5, 'e'}, {7, 'f'}, {7, 'g'}};
  const OrderedSearch search(kNumberOf, list);
  for (int first = 0; first < 9; ++first) {
    for (int second = 0; second < 9; ++second) {
      search.find(first);
      ASSERT_EQ(search.find(second), findFirstBy(kNumberOf, list, second)) << second << " after " << first;
    }
  }
}

TEST(OrderedSearch, FindsNothingInAnEmptyList) {
  const std::vector<Numbered> list;
  const OrderedSearch search(kNumberOf, list);
  EXPECT_EQ(search.find(0), nullptr);
  EXPECT_EQ(search.find(1), nullptr);
}

}  // namespace
