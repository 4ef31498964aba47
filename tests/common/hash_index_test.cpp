#include "hash_index.h"

#include <gtest/gtest.h>

namespace {

using Position = HashIndex::Position;

constexpr auto kAny = [](Position) { return true; };

constexpr auto isAt(Position position) {
  return [position](Position candidate) { return candidate == position; };
}

TEST(HashIndex, FindsNothingBeforeAnythingIsAdded) {
  const HashIndex index;
  EXPECT_EQ(index.find(0, kAny), HashIndex::kNowhere);
  EXPECT_EQ(index.find(7, kAny), HashIndex::kNowhere);
}

TEST(HashIndex, FindsEachOfManyAndNoOther) {
  constexpr Position kCount = 10000;
  for (const std::size_t expected : {std::size_t{0}, std::size_t{kCount}}) {
    HashIndex index(expected);
    for (Position position = 0; position < kCount; ++position) index.add(position * 3U, position);
    for (Position position = 0; position < kCount; ++position) {
      ASSERT_EQ(index.find(position * 3U, kAny), position);
      ASSERT_EQ(index.find(position * 3U + 1, kAny), HashIndex::kNowhere);
    }
  }
}

TEST(HashIndex, TellsHashesApartByTheirUpperHalfToo) {
  if constexpr (sizeof(std::size_t) > sizeof(std::uint32_t)) {
    HashIndex index;
    index.add(std::size_t{1} << 40, 1);
    index.add(std::size_t{1} << 41, 2);
    EXPECT_EQ(index.find(std::size_t{1} << 40, kAny), 1U);
    EXPECT_EQ(index.find(std::size_t{1} << 41, kAny), 2U);
  }
}

TEST(HashIndex, FindsOfOneHashTheOneThatIsMeant) {
  HashIndex index;
  for (const Position position : {4U, 2U, 9U}) index.add(7, position);
  for (const Position position : {4U, 2U, 9U}) EXPECT_EQ(index.find(7, isAt(position)), position);
  EXPECT_EQ(index.find(7, isAt(3)), HashIndex::kNowhere);
}

TEST(HashIndex, FindsOfSeveralThatAreMeantTheFirstEvenAfterItHasGrown) {
  HashIndex index;
  for (Position position = 0; position < 100; ++position) {
    index.add(7, position);
    ASSERT_EQ(index.find(7, kAny), 0U) << position;
  }
}

TEST(HashIndex, FindsAnElementWhereItWasMovedTo) {
  HashIndex index;
  index.add(7, 0);
  index.add(7, 1);
  index.add(8, 2);
  index.move(7, 1, 5);
  EXPECT_EQ(index.find(7, isAt(5)), 5U);
  EXPECT_EQ(index.find(7, isAt(1)), HashIndex::kNowhere);
  EXPECT_EQ(index.find(7, isAt(0)), 0U);
  EXPECT_EQ(index.find(8, kAny), 2U);
}

TEST(HashIndex, FindsNothingAfterItWasClearedAndTakesNewOnes) {
  HashIndex index;
  for (Position position = 0; position < 100; ++position) index.add(position, position);
  index.clear();
  for (Position position = 0; position < 100; ++position) {
    ASSERT_EQ(index.find(position, kAny), HashIndex::kNowhere);
  }
  index.add(3, 1);
  EXPECT_EQ(index.find(3, kAny), 1U);
}

}  // namespace
