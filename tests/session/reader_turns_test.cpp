#include "reader_turns.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

constexpr std::chrono::microseconds kNotAtAll(0);
constexpr std::chrono::minutes kPatient(10);

/// Whether nobody is due any more, without waiting.
bool areAllIn(ReaderTurns& turns) { return turns.awaitThoseDue(kNotAtAll); }

TEST(ReaderTurns, NobodyIsDueWhereNobodyWaits) {
  ReaderTurns turns;
  EXPECT_TRUE(areAllIn(turns));
  turns.letIn();
  EXPECT_TRUE(areAllIn(turns));
}

TEST(ReaderTurns, WhoWaitsWhenAnExchangeEndsIsDueUntilIn) {
  ReaderTurns turns;
  const auto one = turns.beginWaiting();
  const auto other = turns.beginWaiting();
  EXPECT_TRUE(areAllIn(turns)) << "the exchange goes on";
  turns.letIn();
  EXPECT_FALSE(areAllIn(turns));
  turns.endWaiting(one);
  EXPECT_FALSE(areAllIn(turns));
  turns.endWaiting(other);
  EXPECT_TRUE(areAllIn(turns));
}

TEST(ReaderTurns, WhoBeginsToWaitLaterIsDueTheNextTime) {
  ReaderTurns turns;
  const auto first = turns.beginWaiting();
  turns.letIn();
  const auto second = turns.beginWaiting();
  turns.endWaiting(first);
  EXPECT_TRUE(areAllIn(turns));
  turns.letIn();
  EXPECT_FALSE(areAllIn(turns));
  turns.endWaiting(second);
  EXPECT_TRUE(areAllIn(turns));
}

TEST(ReaderTurns, WhoGaveUpWhileAnExchangeWentOnIsNotDue) {
  ReaderTurns turns;
  turns.endWaiting(turns.beginWaiting());
  turns.letIn();
  EXPECT_TRUE(areAllIn(turns));
}

TEST(ReaderTurns, WhoeverIsDueAcrossTwoExchangesIsCountedOnce) {
  ReaderTurns turns;
  const auto slow = turns.beginWaiting();
  turns.letIn();
  turns.letIn();
  EXPECT_FALSE(areAllIn(turns));
  turns.endWaiting(slow);
  EXPECT_TRUE(areAllIn(turns));
}

TEST(ReaderTurns, AnExchangeIsWokenWhenTheLastOneIsIn) {
  ReaderTurns turns;
  const auto reader = turns.beginWaiting();
  turns.letIn();
  std::thread thread([&] { turns.endWaiting(reader); });
  EXPECT_TRUE(turns.awaitThoseDue(kPatient));
  thread.join();
}

}  // namespace
