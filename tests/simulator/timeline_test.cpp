#include "engine/timeline.h"

#include <gtest/gtest.h>

#include "scenario/scenario.h"
#include "simulator/workbench.h"

namespace simulator {
namespace {

using std::chrono::milliseconds;

/// The workbench, whose volume `five` takes 5 s to verify and `mirror` 4 s, at a clock that the test moves.
class TimelineTest : public testing::Test {
 protected:
  TimelineTest() : m_five(volume("five")), m_mirror(volume("mirror")) { m_clock.setSpeed(1); }

  Volume& volume(const std::string& name) {
    for (auto& entry : m_machine.volumes) {
      if (entry.second.name == name) return entry.second;
    }
    throw std::logic_error("no such volume");
  }

  void verify(Volume& volume) {
    startVerify(m_machine, volume, false);
    m_timeline.plan(m_machine);
  }

  void pass(std::uint64_t time) { m_timeline.pass(m_machine, time); }
  bool takePercent() { return m_timeline.takePercent(m_machine, m_now); }

  Machine m_machine = readScenario(kWorkbench);
  Volume& m_five;
  Volume& m_mirror;
  Clock::Instant m_now{};
  Clock m_clock{[this] { return m_now; }};
  Timeline m_timeline;
};

TEST_F(TimelineTest, NothingHappensWithoutWork) {
  pass(1000000);
  EXPECT_FALSE(m_timeline.isWorking());
  EXPECT_FALSE(m_timeline.isDue(m_machine));
  EXPECT_FALSE(takePercent());
  EXPECT_EQ(m_machine.pendingMs, 0U);
  EXPECT_EQ(m_timeline.next(m_machine, m_clock), Clock::Instant::max());
}

TEST_F(TimelineTest, WorkIsSeenToProceedBeforeItCounts) {
  verify(m_five);
  pass(2500);
  EXPECT_EQ(m_five.work->elapsedMs, 0U);
  EXPECT_EQ(progressOf(m_machine, m_five), 0x7FFFFFFFU);
  m_timeline.catchUp(m_machine);
  EXPECT_EQ(m_five.work->elapsedMs, 2500U);
  EXPECT_EQ(m_machine.pendingMs, 0U);
  EXPECT_EQ(progressOf(m_machine, m_five), 0x7FFFFFFFU);
}

TEST_F(TimelineTest, TheFirstEndIsDue) {
  verify(m_five);
  verify(m_mirror);
  pass(3999);
  EXPECT_FALSE(m_timeline.isDue(m_machine));
  pass(1);
  EXPECT_TRUE(m_timeline.isDue(m_machine));
  m_timeline.catchUp(m_machine);
  EXPECT_FALSE(m_mirror.work);
  EXPECT_FALSE(m_timeline.isDue(m_machine));
  pass(1000);
  EXPECT_TRUE(m_timeline.isDue(m_machine));
}

TEST_F(TimelineTest, TimeOverManyEndsLosesNothing) {
  verify(m_five);
  verify(m_mirror);
  pass(UINT64_MAX);
  pass(UINT64_MAX);
  m_timeline.catchUp(m_machine);
  EXPECT_FALSE(m_five.work);
  EXPECT_FALSE(m_mirror.work);
}

TEST_F(TimelineTest, LooksAgainAtTheNextPercentAndAtTheEnd) {
  verify(m_five);
  EXPECT_EQ(m_timeline.next(m_machine, m_clock), m_clock.whenPassed(50));
  pass(49);
  EXPECT_FALSE(takePercent());
  pass(1);
  EXPECT_TRUE(takePercent());
  EXPECT_FALSE(takePercent()) << "told";
}

TEST_F(TimelineTest, TellsOfPercentsTwiceInARealSecondAtMost) {
  verify(m_five);
  pass(50);
  EXPECT_TRUE(takePercent());
  pass(50);
  EXPECT_FALSE(takePercent()) << "too early";
  EXPECT_EQ(m_timeline.next(m_machine, m_clock), m_now + milliseconds(500));
  m_now += milliseconds(499);
  EXPECT_FALSE(takePercent());
  m_now += milliseconds(1);
  EXPECT_TRUE(takePercent());
}

TEST_F(TimelineTest, AnEndComesBeforeThePercentThatMustWait) {
  verify(m_five);
  pass(4949);
  EXPECT_TRUE(takePercent());
  m_clock.take();
  EXPECT_EQ(m_timeline.next(m_machine, m_clock), m_clock.whenPassed(51));
}

TEST_F(TimelineTest, AStoppedClockComesToNothing) {
  verify(m_five);
  m_clock.setSpeed(0);
  EXPECT_EQ(m_timeline.next(m_machine, m_clock), Clock::Instant::max());
}

TEST_F(TimelineTest, APercentThatMustWaitIsToldThoughTheClockHasStopped) {
  verify(m_five);
  pass(50);
  EXPECT_TRUE(takePercent());
  pass(50);
  m_clock.setSpeed(0);
  EXPECT_EQ(m_timeline.next(m_machine, m_clock), m_now + milliseconds(500));
}

TEST_F(TimelineTest, WorkThatWaitsForItsDataDoesNotProceed) {
  const auto disks = m_machine.arrays.at(m_five.array).disks;
  startMigration(m_machine, m_five, RaidLevel::RAID_5, disks, m_five.size);
  m_machine.devices.at(disks[0]).presence = Presence::ABSENT;
  m_machine.devices.at(disks[1]).presence = Presence::ABSENT;
  m_timeline.plan(m_machine);
  EXPECT_FALSE(m_timeline.isWorking());
}

TEST_F(TimelineTest, ProgressIsAFractionOf32Bits) {
  EXPECT_EQ(progressOf(m_machine, m_five), 0U);
  m_five.work.emplace();
  m_five.work->totalMs = 1000;
  m_five.work->elapsedMs = 500;
  EXPECT_EQ(progressOf(m_machine, m_five), 0x7FFFFFFFU);
  m_five.work->elapsedMs = 1000;
  EXPECT_EQ(progressOf(m_machine, m_five), 0xFFFFFFFFU);
  m_five.work->totalMs = std::uint64_t{1} << 60;
  m_five.work->elapsedMs = std::uint64_t{1} << 59;
  EXPECT_EQ(progressOf(m_machine, m_five), 0x7FFFFFFFU);
}

}  // namespace
}  // namespace simulator
