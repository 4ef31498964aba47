#include "hash_index.h"

#include <gtest/gtest.h>

namespace {

using Position = HashIndex::Position;

constexpr auto kAny = [](Position) { return true; };

constexpr auto isAt(Position position) {
  return [position](Position candidate) { return candidate == position; };
}

TEST(HashIndex, FindsNothingBeforeAnythingIsAdded) {
  for (const HashIndex& index : {HashIndex(), HashIndex(0), HashIndex(10)}) {
    EXPECT_EQ(index.find(0, kAny), HashIndex::kNowhere);
    EXPECT_EQ(index.find(7, kAny), HashIndex::kNowhere);
    EXPECT_EQ(index.size(), 0U);
  }
}

TEST(HashIndex, FindsEachOfManyAndNoOther) {
  constexpr Position kCount = 10000;
  for (const std::size_t expected : {std::size_t{0}, std::size_t{kCount}}) {
    HashIndex index(expected);
    for (Position position = 0; position < kCount; ++position) index.add(position * 3U, position);
    ASSERT_EQ(index.size(), kCount);
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

TEST(HashIndex, FindsElementsThatHaveChangedPlaces) {
  constexpr Position kCount = 100;
  HashIndex index;
  for (Position position = 0; position < kCount; ++position) index.add(position, position);
  for (Position i = 0; i < kCount / 2; ++i) index.exchange(i, i, kCount - 1 - i, kCount - 1 - i);
  for (Position i = 0; i < kCount; ++i) ASSERT_EQ(index.find(i, kAny), kCount - 1 - i);
}

TEST(HashIndex, FindsElementsOfOneHashThatHaveChangedPlaces) {
  HashIndex index;
  for (const Position position : {0U, 1U, 2U}) index.add(7, position);
  index.exchange(7, 0, 7, 2);
  EXPECT_EQ(index.find(7, kAny), 2U);
  for (const Position position : {0U, 1U, 2U}) EXPECT_EQ(index.find(7, isAt(position)), position);
}

}  // namespace
