#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <new>

#include "enumerations.h"
#include "vex_codes.h"
#include "VEXL2.h"

// By itself, since whoever looks a code up first would have had the tables made.

namespace {

std::size_t allocations = 0;

/// How often `use` allocates.
template <class Use>
std::size_t allocationsOf(Use use) {
  const std::size_t before = allocations;
  use();
  return allocations - before;
}

}  // namespace

// These take the place of the standard library's.
void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

TEST(TablesAtLoad, AreBuiltBeforeTheFirstLookUp) {
  ASSERT_GT(allocationsOf([] { std::vector<int>(100).swap(*std::make_unique<std::vector<int>>()); }), 0U);
  RaidLevel level = RaidLevel::RAID_UNKNOWN;
  EXPECT_EQ(allocationsOf([&level] { level = raidLevelFromVex(VEX_RAID_LEVEL_10); }), 0U);
  EXPECT_EQ(level, RaidLevel::RAID_10);
  std::size_t sizes = 0;
  EXPECT_EQ(allocationsOf([&sizes] { sizes = stripSizeBits().size(); }), 0U);
  EXPECT_GT(sizes, 0U);
}

}  // namespace
