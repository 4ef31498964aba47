#include "state/process_lock.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace simulator {
namespace {

using std::chrono::milliseconds;

class ProcessLockTest : public testing::Test {
 protected:
  std::filesystem::path path() const { return (m_folder / "state.json.lock").string(); }

  /// Waits without sleeping, and does something else each time that it would sleep.
  LockWait wait(std::function<void()> meanwhile = [] {}) {
    LockWait wait;
    wait.sleep = [this, meanwhile](milliseconds time) {
      m_slept += time;
      meanwhile();
    };
    return wait;
  }

  const TemporaryFolder m_folder;
  milliseconds m_slept{0};
};

TEST_F(ProcessLockTest, IsHeldByOneAtATime) {
  auto lock = ProcessLock::take(path());
  ASSERT_TRUE(lock);
  EXPECT_FALSE(ProcessLock::take(path()));
  lock.reset();
  EXPECT_TRUE(ProcessLock::take(path()));
}

TEST_F(ProcessLockTest, NamesItsHolder) {
  const auto lock = ProcessLock::take(path());
  const std::string holder = holderOf(path());
  EXPECT_FALSE(holder.empty());
  EXPECT_EQ(readText(path().c_str()), holder + "\n");
}

TEST_F(ProcessLockTest, OfAFileThatNamesNobodyNamesNobody) {
  EXPECT_EQ(holderOf(path()), "");
  writeText(path().c_str(), "somebody\n");
  EXPECT_EQ(holderOf(path()), "");
}

TEST_F(ProcessLockTest, IsWaitedForTenSeconds) {
  const auto lock = ProcessLock::take(path());
  EXPECT_FALSE(waitForLock(path(), wait()));
  EXPECT_EQ(m_slept, milliseconds(10000));
}

TEST_F(ProcessLockTest, IsTakenAsSoonAsItIsFree) {
  auto lock = ProcessLock::take(path());
  EXPECT_TRUE(waitForLock(path(), wait([&] {
                            if (m_slept == milliseconds(500)) lock.reset();
                          })));
  EXPECT_EQ(m_slept, milliseconds(500));
}

TEST_F(ProcessLockTest, ThatIsFreeIsNotWaitedFor) {
  EXPECT_TRUE(waitForLock(path(), wait()));
  EXPECT_EQ(m_slept, milliseconds(0));
}

TEST_F(ProcessLockTest, ThatCannotBeMadeSaysWhy) {
  EXPECT_THROW(ProcessLock::take(path() / "below a file"), std::runtime_error);
}

}  // namespace
}  // namespace simulator
