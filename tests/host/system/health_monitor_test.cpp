#include "system/health_monitor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>

#include "host/api/mock_plugin.h"

namespace host {

namespace {

using namespace std::chrono_literals;
using ovra::data_transfer::ServiceObject;
using testing::Return;
using testing::Throw;

class WatchedPlugin : public MockPlugin, public ovra::watched_plugin_1 {
 public:
  ovra::PluginPosition position() override { return {}; }
  bool waitForChange(const ovra::PluginPosition&, std::int64_t) override { return false; }
  ServiceObject eventsAfter(std::uint64_t, std::uint64_t) override { return {}; }
  MOCK_METHOD(ServiceObject, picture, (), (override));
};

ServiceObject pictureTaken(std::chrono::milliseconds ago) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  ServiceObject picture;
  picture.member(L"takenAt") =
      static_cast<std::uint64_t>((std::chrono::duration_cast<std::chrono::milliseconds>(now) - ago).count());
  return picture;
}

class HealthMonitorTest : public testing::Test {
 protected:
  HealthMonitor::Settings settings() {
    HealthMonitor::Settings settings;
    settings.now = [this] { return m_now; };
    return settings;
  }

  HealthMonitor::Moment m_now{};
  testing::NiceMock<MockPlugin> m_plugin;
  testing::NiceMock<WatchedPlugin> m_watched;
};

TEST_F(HealthMonitorTest, KnowsNothingAtFirst) {
  const HealthMonitor monitor(m_plugin, settings());
  EXPECT_EQ(monitor.whyNotWorking(), "The plug-in has not told its status yet");
}

TEST_F(HealthMonitorTest, TellsTheLastAnswer) {
  HealthMonitor monitor(m_plugin, settings());
  EXPECT_CALL(m_plugin, getStatus())
      .WillOnce(Return(0))
      .WillOnce(Return(1))
      .WillOnce(Throw(std::runtime_error("why")))
      .WillOnce(Return(0));
  monitor.ask();
  EXPECT_EQ(monitor.whyNotWorking(), std::nullopt);
  monitor.ask();
  EXPECT_EQ(monitor.whyNotWorking(), "The plug-in does not work");
  monitor.ask();
  EXPECT_EQ(monitor.whyNotWorking(), "The plug-in failed to tell its status: why");
  monitor.ask();
  EXPECT_EQ(monitor.whyNotWorking(), std::nullopt);
}

TEST_F(HealthMonitorTest, AnAnswerHoldsForThirtySeconds) {
  HealthMonitor monitor(m_plugin, settings());
  monitor.ask();
  m_now += 30s;
  EXPECT_EQ(monitor.whyNotWorking(), std::nullopt);
  m_now += 1ms;
  EXPECT_EQ(monitor.whyNotWorking(), "The plug-in does not answer any more");
}

TEST_F(HealthMonitorTest, WithoutAPictureInterfaceThePluginIsReady) {
  HealthMonitor monitor(m_plugin, settings());
  monitor.ask();
  EXPECT_EQ(monitor.whyNotReady(), std::nullopt);
  monitor.announceStop();
  EXPECT_EQ(monitor.whyNotReady(), "The host is about to stop");
  EXPECT_EQ(monitor.whyNotWorking(), std::nullopt);
}

TEST_F(HealthMonitorTest, APictureHoldsForTwentySeconds) {
  HealthMonitor monitor(m_watched, settings());
  EXPECT_EQ(monitor.whyNotReady(), "The plug-in has no picture of the machine yet");
  EXPECT_CALL(m_watched, picture()).WillRepeatedly([] { return pictureTaken(5s); });
  monitor.ask();
  EXPECT_EQ(monitor.whyNotReady(), std::nullopt);
  m_now += 14s;
  EXPECT_EQ(monitor.whyNotReady(), std::nullopt);
  m_now += 2s;
  EXPECT_EQ(monitor.whyNotReady(), "The plug-in's picture of the machine is too old");
}

TEST_F(HealthMonitorTest, APictureThatIsYoungIsNotLookedAtAgain) {
  HealthMonitor monitor(m_watched, settings());
  EXPECT_CALL(m_watched, picture()).WillOnce(Return(pictureTaken(0s)));
  for (int second = 0; second < 8; second += 2) {
    monitor.ask();
    m_now += 2s;
  }
  testing::Mock::VerifyAndClearExpectations(&m_watched);
  EXPECT_CALL(m_watched, picture()).WillOnce(Return(pictureTaken(0s)));
  monitor.ask();
}

TEST_F(HealthMonitorTest, AnOldPictureIsNotLookedAtWithEachQuestion) {
  HealthMonitor monitor(m_watched, settings());
  EXPECT_CALL(m_watched, picture()).Times(4).WillRepeatedly([] { return pictureTaken(60s); });
  for (int second = 0; second < 32; second += 2) {
    monitor.ask();
    m_now += 2s;
  }
}

TEST_F(HealthMonitorTest, AMachineWithoutAPictureIsNotReady) {
  HealthMonitor monitor(m_watched, settings());
  ServiceObject none;
  none.member(L"takenAt");
  EXPECT_CALL(m_watched, picture()).WillOnce(Return(none));
  monitor.ask();
  EXPECT_EQ(monitor.whyNotReady(), "The plug-in has no picture of the machine yet");
}

TEST_F(HealthMonitorTest, AsksAgainAndAgain) {
  HealthMonitor::Settings settings;
  settings.interval = 1ms;
  std::promise<void> often;
  std::atomic<int> count{0};
  EXPECT_CALL(m_plugin, getStatus()).WillRepeatedly([&] {
    if (++count == 3) often.set_value();
    return 0;
  });
  HealthMonitor monitor(m_plugin, settings);
  monitor.start();
  EXPECT_EQ(often.get_future().wait_for(20s), std::future_status::ready);
  EXPECT_TRUE(monitor.stop(20s));
}

TEST_F(HealthMonitorTest, AHangingPluginKeepsNobodyWaiting) {
  HealthMonitor::Settings settings;
  settings.interval = 1ms;
  std::promise<void> released;
  const auto release = released.get_future().share();
  EXPECT_CALL(m_plugin, getStatus()).WillRepeatedly([release] {
    release.wait();
    return 0;
  });
  HealthMonitor monitor(m_plugin, settings);
  monitor.start();
  EXPECT_EQ(monitor.whyNotWorking(), "The plug-in has not told its status yet");
  EXPECT_FALSE(monitor.stop(1ms));
  released.set_value();
  EXPECT_TRUE(monitor.stop(20s));
}

}  // namespace

}  // namespace host
