#include "net/lanes.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "support/by_name.h"

namespace host {

namespace {

/// Tasks that stay inside until they may go.
class Gate {
 public:
  void pass() {
    std::unique_lock<std::mutex> lock(m_mutex);
    ++m_inside;
    m_changed.notify_all();
    m_changed.wait(lock, [this] { return m_isOpen; });
  }
  /// Waits until so many are inside, whether at once or one after the other.
  void await(int count) {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock, [this, count] { return m_inside >= count; });
  }
  int inside() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_inside;
  }
  void open() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isOpen = true;
    m_changed.notify_all();
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  int m_inside = 0;
  bool m_isOpen = false;
};

struct LaneRow {
  std::string name;
  Lane lane;
  int workers;
};

class LanesTest : public testing::TestWithParam<LaneRow> {
 protected:
  ~LanesTest() override { m_gate.open(); }

  static Limits limits() {
    Limits limits;
    limits.readWorkers = 3;
    limits.changeWorkers = 2;
    limits.waitingCalls = 1;
    return limits;
  }

  bool submit(Lane lane) {
    return m_lanes.submit(lane, "", [this] { m_gate.pass(); });
  }

  Gate m_gate;
  Lanes m_lanes{limits()};
};

TEST_P(LanesTest, AsManyRunAsThereAreWorkersAndOneMoreWaits) {
  const LaneRow& row = GetParam();
  for (int i = 0; i < row.workers; ++i) ASSERT_TRUE(submit(row.lane)) << i;
  m_gate.await(row.workers);
  ASSERT_TRUE(submit(row.lane)) << "it may wait";
  EXPECT_FALSE(submit(row.lane)) << "no more may";
  EXPECT_EQ(m_gate.inside(), row.workers);
  m_gate.open();
  m_gate.await(row.workers + 1);
}

TEST_P(LanesTest, AFullOneLeavesTheOthersFree) {
  const LaneRow& row = GetParam();
  for (int i = 0; i < row.workers; ++i) ASSERT_TRUE(submit(row.lane));
  m_gate.await(row.workers);
  int others = 0;
  for (const Lane lane : {Lane::kOwn, Lane::kReads, Lane::kChanges}) {
    if (lane == row.lane) continue;
    EXPECT_TRUE(submit(lane));
    m_gate.await(row.workers + ++others);
  }
}

INSTANTIATE_TEST_SUITE_P(All, LanesTest,
                         testing::Values(LaneRow{"Own", Lane::kOwn, 2}, LaneRow{"Reads", Lane::kReads, 3},
                                         LaneRow{"Changes", Lane::kChanges, 2}),
                         ByName());

}  // namespace

}  // namespace host
