#include "notifications/delivery_queue.h"

#include <gmock/gmock.h>

namespace host {

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

class DeliveryQueueTest : public testing::Test {
 protected:
  static Delivery deliveryOf(const std::string& id, const std::string& alarm) {
    return {id, alarm, "raised", "{}"};
  }

  static std::vector<std::string> idsOf(const std::vector<Delivery>& deliveries) {
    std::vector<std::string> ids;
    for (const Delivery& each : deliveries) ids.push_back(each.id);
    return ids;
  }

  void add(const std::string& id, const std::string& alarm, std::size_t target = 0) {
    EXPECT_FALSE(m_queue.add(target, deliveryOf(id, alarm), m_now));
  }

  /// The id of the one that is tried now; empty where there is none.
  std::string begun(std::size_t target = 0) {
    const auto delivery = m_queue.begin(target, m_now);
    return delivery ? delivery->id : std::string();
  }

  std::string tryInVain() {
    const std::string id = begun();
    if (!id.empty()) m_queue.fail(0, m_now);
    return id;
  }

  std::string tryWell() {
    const std::string id = begun();
    if (!id.empty()) m_queue.finish(0);
    return id;
  }

  DeliveryQueue::Moment m_now{hours(1000)};
  DeliveryQueue m_queue{2, DeliveryQueue::Settings{4, seconds(1), minutes(10), hours(24)}};
};

TEST_F(DeliveryQueueTest, IsEmptyAtFirst) {
  EXPECT_EQ(begun(), "");
  EXPECT_FALSE(m_queue.nextTurn(0));
  EXPECT_EQ(m_queue.size(), 0U);
}

TEST_F(DeliveryQueueTest, HoldsAThousandUnlessTold) { EXPECT_EQ(DeliveryQueue::Settings().most, 1000U); }

TEST_F(DeliveryQueueTest, TellsInOrder) {
  add("a", "x");
  add("b", "y");
  EXPECT_EQ(tryWell(), "a");
  EXPECT_EQ(tryWell(), "b");
  EXPECT_EQ(m_queue.size(), 0U);
}

TEST_F(DeliveryQueueTest, TriesAgainAfterOneSecondDoublingToTenMinutes) {
  add("a", "x");
  std::vector<std::int64_t> pauses;
  for (int i = 0; i < 13; ++i) {
    EXPECT_EQ(tryInVain(), "a");
    const auto turn = m_queue.nextTurn(0);
    ASSERT_TRUE(turn);
    pauses.push_back(std::chrono::duration_cast<seconds>(*turn - m_now).count());
    m_now = *turn - std::chrono::milliseconds(1);
    EXPECT_EQ(begun(), "");
    m_now += std::chrono::milliseconds(1);
  }
  EXPECT_THAT(pauses, ElementsAre(1, 2, 4, 8, 16, 32, 64, 128, 256, 512, 600, 600, 600));
}

TEST_F(DeliveryQueueTest, GivesUpAfterADay) {
  add("a", "x");
  const auto end = m_now + hours(24);
  while (m_now < end) {
    EXPECT_THAT(m_queue.takeExpired(0, m_now), IsEmpty());
    tryInVain();
    m_now = m_queue.nextTurn(0).value();
  }
  EXPECT_EQ(m_now, end);
  EXPECT_THAT(idsOf(m_queue.takeExpired(0, m_now)), ElementsAre("a"));
  EXPECT_EQ(m_queue.size(), 0U);
}

TEST_F(DeliveryQueueTest, WhatIsRefusedHoldsUpNothingOfAnotherAlarm) {
  add("refused", "x");
  EXPECT_EQ(tryInVain(), "refused");
  add("b", "y");
  EXPECT_EQ(begun(), "");  // the target has just failed
  m_now += seconds(1);
  EXPECT_EQ(tryWell(), "b");
  EXPECT_EQ(tryInVain(), "refused");
  add("c", "y");
  m_now += seconds(1);
  EXPECT_EQ(tryWell(), "c");
}

TEST_F(DeliveryQueueTest, OfOneAlarmNothingOvertakes) {
  add("raised", "x");
  add("cleared", "x");
  EXPECT_EQ(tryInVain(), "raised");
  EXPECT_EQ(m_queue.nextTurn(0), m_now + seconds(1));
  m_now += seconds(1);
  EXPECT_EQ(tryWell(), "raised");
  EXPECT_EQ(tryWell(), "cleared");
}

TEST_F(DeliveryQueueTest, WhatMayNotOvertakeIsNoTurn) {
  add("raised", "x");
  EXPECT_EQ(tryInVain(), "raised");
  m_now += seconds(1);
  EXPECT_EQ(tryInVain(), "raised");
  add("cleared", "x");
  add("b", "y");
  m_now += seconds(1);
  EXPECT_EQ(m_queue.nextTurn(0), m_now + seconds(1));
  m_now += seconds(1);
  EXPECT_EQ(tryWell(), "b");
  EXPECT_EQ(tryInVain(), "raised");
  EXPECT_EQ(begun(), "");
  EXPECT_EQ(m_queue.nextTurn(0), m_now + seconds(4));
}

TEST_F(DeliveryQueueTest, ATargetThatFailsIsLeftAloneWhateverWaits) {
  add("a", "x");
  add("b", "y");
  add("c", "z");
  EXPECT_EQ(tryInVain(), "a");
  EXPECT_EQ(tryInVain(), "");
  m_now += seconds(1);
  EXPECT_EQ(tryInVain(), "b");
  m_now += seconds(1);
  EXPECT_EQ(tryInVain(), "");
  m_now += seconds(1);
  EXPECT_EQ(tryWell(), "c");
  EXPECT_EQ(tryWell(), "a");  // all that is due follows at once
  EXPECT_EQ(tryWell(), "b");
}

TEST_F(DeliveryQueueTest, TargetsDoNotWaitForEachOther) {
  add("a", "x", 0);
  add("b", "x", 1);
  EXPECT_EQ(tryInVain(), "a");
  EXPECT_EQ(begun(1), "b");
}

TEST_F(DeliveryQueueTest, TheOldestOfTheLongestMakesPlace) {
  add("a", "x", 0);
  add("b", "y", 0);
  add("c", "z", 0);
  add("d", "x", 1);
  const auto loss = m_queue.add(1, deliveryOf("e", "y"), m_now);
  ASSERT_TRUE(loss);
  EXPECT_EQ(loss->target, 0U);
  EXPECT_EQ(loss->delivery.id, "a");
  EXPECT_EQ(m_queue.size(), 4U);
  EXPECT_THAT(idsOf(m_queue.takeAll(0)), ElementsAre("b", "c"));
  EXPECT_THAT(idsOf(m_queue.takeAll(1)), ElementsAre("d", "e"));
}

TEST_F(DeliveryQueueTest, WhatIsUnderWayMakesNoPlace) {
  for (const char* id : {"a", "b", "c", "d"}) add(id, id);
  EXPECT_EQ(begun(), "a");
  const auto loss = m_queue.add(0, deliveryOf("e", "e"), m_now);
  ASSERT_TRUE(loss);
  EXPECT_EQ(loss->delivery.id, "b");
}

TEST_F(DeliveryQueueTest, ABrokenTryIsNone) {
  add("a", "x");
  EXPECT_EQ(begun(), "a");
  m_queue.breakOff(0);
  EXPECT_EQ(begun(), "a");
}

}  // namespace

}  // namespace host
