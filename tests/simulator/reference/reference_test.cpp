#include <gtest/gtest.h>

#include <set>
#include <string>

#include "simulator/reference/walk.h"

// The library does what a second machine does that was written from the manual alone.

namespace reference {
namespace {

constexpr std::uint32_t kFirstSeed = 20261121;
constexpr int kWalks = 10;
constexpr int kStepsOfAWalk = 2000;

TEST(Reference, IsMatchedAtEveryStep) {
  Tally tally;
  for (std::uint32_t seed = kFirstSeed; seed < kFirstSeed + kWalks; ++seed) {
    Walk walk(seed, tally);
    for (int step = 0; step < kStepsOfAWalk; ++step) {
      const std::string difference = walk.step();
      ASSERT_EQ(difference, "") << "after step " << step << " of seed " << seed << ":\n" << walk.story();
    }
  }
  EXPECT_EQ(tally.states.size(), 10U) << "volumes were in all states";
  EXPECT_GT(tally.migrationsThatWaited, 0);
  EXPECT_GT(tally.migrationsThatCaughtUp, 0);
  EXPECT_GT(tally.worksThatShared, 0);
  std::set<std::string> done;
  std::set<std::string> tried;
  for (const auto& [answer, times] : tally.answers) {
    tried.insert(answer.first);
    if (answer.second == 0) done.insert(answer.first);
  }
  EXPECT_EQ(done, tried) << "each action was taken at least once";
}

}  // namespace
}  // namespace reference
