#include "history/history_queue.h"

#include <gmock/gmock.h>

#include "insight/history/sample_entries.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::uint64_t> sequencesOf(const std::vector<Entry>& entries) {
  std::vector<std::uint64_t> sequences;
  for (const Entry& entry : entries) sequences.push_back(entry.sequence);
  return sequences;
}

TEST(HistoryQueue, GivesInOrderWhatCame) {
  HistoryQueue queue(10);
  EXPECT_TRUE(queue.isEmpty());
  queue.add(sampleEvents(1, 2));
  queue.add(sampleEvents(3, 4));
  EXPECT_FALSE(queue.isEmpty());
  EXPECT_THAT(sequencesOf(queue.take(3).batch.entries), ElementsAre(1U, 2U, 3U));
  EXPECT_THAT(sequencesOf(queue.take(3).batch.entries), ElementsAre(4U));
  EXPECT_TRUE(queue.isEmpty());
}

TEST(HistoryQueue, WhatIsPutBackComesFirst) {
  HistoryQueue queue(10);
  queue.add(sampleEvents(1, 3));
  HistoryQueue::Part part = queue.take(2);
  queue.add(sampleEvents(4, 4));
  queue.putBack(std::move(part));
  EXPECT_THAT(sequencesOf(queue.take(10).batch.entries), ElementsAre(1U, 2U, 3U, 4U));
}

TEST(HistoryQueue, TellsEachOnce) {
  HistoryQueue queue(10);
  queue.add(sampleEvents(1, 2));
  EXPECT_TRUE(queue.hasUntold());
  EXPECT_THAT(sequencesOf(queue.tell()), ElementsAre(1U, 2U));
  EXPECT_FALSE(queue.hasUntold());
  queue.add(sampleEvents(3, 3));
  EXPECT_THAT(sequencesOf(queue.tell()), ElementsAre(3U));
  queue.add(sampleEvents(4, 4));
  HistoryQueue::Part part = queue.take(2);
  EXPECT_EQ(part.told, 2U);
  queue.putBack(std::move(part));
  part = queue.take(10);
  EXPECT_EQ(part.told, 3U) << "of four, one is not told yet";
}

TEST(HistoryQueue, CountsWhatIsTooMuch) {
  HistoryQueue queue(3);
  EXPECT_TRUE(queue.add(sampleEvents(1, 2)));
  EXPECT_FALSE(queue.add(sampleEvents(3, 4)));
  EXPECT_TRUE(queue.add(sampleEvents(5, 5)));
  EXPECT_FALSE(queue.add(sampleEvents(6, 6)));

  HistoryQueue::Part first = queue.take(2);
  EXPECT_EQ(first.loss.count, 0) << "told behind all that was there before";
  HistoryQueue::Part second = queue.take(2);
  EXPECT_EQ(second.loss.count, 3);
  EXPECT_EQ(second.loss.fromMs, sampleEvent(3).atMs);
  EXPECT_EQ(second.loss.toMs, sampleEvent(6).atMs);
  EXPECT_TRUE(queue.isEmpty());

  queue.putBack(std::move(second));
  EXPECT_FALSE(queue.isEmpty());
  EXPECT_EQ(queue.take(10).loss.count, 3) << "until it is written";
}

TEST(HistoryQueue, HasNoRoomForMoreWhileSomeIsBeingWritten) {
  HistoryQueue queue(3);
  EXPECT_TRUE(queue.add(sampleEvents(1, 3)));
  HistoryQueue::Part part = queue.take(2);
  EXPECT_FALSE(queue.add(sampleEvents(4, 4))) << "it may have to take them back";
  queue.putBack(std::move(part));
  EXPECT_FALSE(queue.add(sampleEvents(5, 5)));
  part = queue.take(2);
  queue.settle();
  EXPECT_TRUE(queue.add(sampleEvents(6, 7)));
  EXPECT_THAT(sequencesOf(queue.take(3).batch.entries), ElementsAre(3U, 6U, 7U));
}

TEST(HistoryQueue, KeepsTheNewestOfWhatLasts) {
  HistoryQueue queue(1);
  HistoryBatch begun = sampleEvents(1, 2);
  begun.jobs = {sampleRecord("a-1", 1)};
  EXPECT_FALSE(queue.add(std::move(begun))) << "no room for its entries";
  HistoryQueue::Part part = queue.take(1);
  EXPECT_THAT(part.batch.jobs, SizeIs(1)) << "but always for what lasts";
  HistoryBatch end;
  end.jobs = {ended(sampleRecord("a-1", 1), 5)};
  queue.add(std::move(end));
  queue.putBack(std::move(part));
  const HistoryQueue::Part next = queue.take(1);
  ASSERT_THAT(next.batch.jobs, SizeIs(1));
  EXPECT_EQ(next.batch.jobs.at(0).toMs, 5);
}

TEST(HistoryQueue, RepeatsWhatLastsForANewFile) {
  HistoryQueue queue(10);
  HistoryBatch batch;
  batch.jobs = {sampleRecord("a-1", 1), ended(sampleRecord("a-2", 1), 2)};
  batch.alarms = {sampleRecord("x", 3)};
  queue.add(std::move(batch));
  queue.take(10);
  EXPECT_TRUE(queue.isEmpty());
  queue.repeatLasting();
  const HistoryQueue::Part part = queue.take(10);
  ASSERT_THAT(part.batch.jobs, SizeIs(1));
  EXPECT_EQ(part.batch.jobs.at(0).id, "a-1");
  EXPECT_THAT(part.batch.alarms, SizeIs(1));
  EXPECT_THAT(part.batch.entries, IsEmpty());
}

TEST(HistoryQueue, KnowsWhatLasts) {
  HistoryQueue queue(10);
  HistoryBatch batch;
  batch.jobs = {sampleRecord("a-1", 1), ended(sampleRecord("a-2", 1), 2)};
  batch.alarms = {sampleRecord("x", 3)};
  queue.add(std::move(batch));
  EXPECT_TRUE(queue.isJob(sampleRecord("a-1", 1)));
  EXPECT_FALSE(queue.isJob(sampleRecord("a-1", 2)));
  EXPECT_FALSE(queue.isJob(sampleRecord("a-2", 1)));
  EXPECT_TRUE(queue.isAlarm(sampleRecord("x", 3)));
}

}  // namespace
}  // namespace insight
