#include "configuration.h"

#include <gtest/gtest.h>

#include "listeners/listener_requests.h"
#include "request_error.h"
#include "service_exceptions.h"

// A second setting beside the one that there is: all that clients see of it stands in its row.

namespace {

/// A session with a setting more.
class WindySession : public FakeSession {
 public:
  std::int64_t getFanSpeed() { return fanSpeed; }
  bool setFanSpeed(std::int64_t value) {
    actions.push_back("setFanSpeed(" + std::to_string(value) + ")");
    return !fanRefuses;
  }

  std::int64_t fanSpeed = 40;
  bool fanRefuses = false;
};

PluginSetting fanSpeed() {
  PluginSetting row = kLocateTimeoutSetting;
  row.least = 0;
  row.most = 100;
  row.key = L"fan_speed";
  row.description = L"How fast fans turn.";
  row.type = L"percentage";
  row.tooLow = L"Too slow";
  row.tooHigh = L"Too fast";
  row.notStored = L"Could not change the fans";
  row.get = static_cast<std::int64_t (IMirnSession::*)()>(&WindySession::getFanSpeed);
  row.set = static_cast<bool (IMirnSession::*)(std::int64_t)>(&WindySession::setFanSpeed);
  return row;
}

class Configuration : public testing::Test {
 protected:
  /// What the change came to, as a listener's test reads it.
  std::string change(const ServiceObject& body) {
    try {
      changeConfiguration(m_settings, m_session, body);
    } catch (const ListenerException& error) {
      return refused(error.getErrorId(), error.what());
    } catch (const ovra::request_validator::RequestError& error) {
      return invalid(error.what());
    }
    return "changed";
  }

  void expectRefused(const ServiceObject& body, const std::string& words) {
    EXPECT_EQ(change(body), refused("INVALID_PARAMETER", words));
    EXPECT_TRUE(m_session.actions.empty());
  }

  const PluginSettings m_settings = {kLocateTimeoutSetting, fanSpeed()};
  WindySession m_session;
};

TEST_F(Configuration, PublishesEachSettingByItsRow) {
  EXPECT_EQ(describe(configurationOf({fanSpeed()}, m_session)),
            "fan_speed.description = \"How fast fans turn.\", fan_speed.max = signed 100, "
            "fan_speed.min = signed 0, fan_speed.type = \"percentage\", fan_speed.value = signed 40");
  const ServiceObject both = configurationOf(m_settings, m_session);
  EXPECT_EQ(both.member(L"fan_speed").member(L"value").toInt64(), 40);
  EXPECT_EQ(both.member(L"locate_timeout").member(L"value").toInt64(), 120);
}

TEST_F(Configuration, ChangesTheSettingsThatAreNamedAndNoOthers) {
  EXPECT_EQ(change(body({{"fan_speed", 0u}})), "changed");
  EXPECT_EQ(change(body({{"locate_timeout", 60u}})), "changed");
  EXPECT_EQ(m_session.actions, (std::vector<std::string>{"setFanSpeed(0)", "setLocateTimeout(60)"}));
}

TEST_F(Configuration, ChangesSeveralInTheOrderOfTheRows) {
  EXPECT_EQ(change(body({{"fan_speed", 100u}, {"locate_timeout", 60u}})), "changed");
  EXPECT_EQ(m_session.actions, (std::vector<std::string>{"setLocateTimeout(60)", "setFanSpeed(100)"}));
}

TEST_F(Configuration, HoldsEachValueToTheBoundsOfItsRow) {
  expectRefused(body({{"fan_speed", 101u}}), "Too fast");
  expectRefused(body({{"locate_timeout", 0u}}), "Timeout value is too low or negative");
}

TEST_F(Configuration, TakesANumberAboveTheSignedMaximumAsNegative) {
  ServiceObject highest = body({});
  highest.member(L"fan_speed") = std::uint64_t{18446744073709551615U};
  expectRefused(highest, "Too slow");
}

TEST_F(Configuration, StoresNothingWhenOneOfSeveralIsOutOfBounds) {
  expectRefused(body({{"fan_speed", 101u}, {"locate_timeout", 60u}}), "Too fast");
  expectRefused(body({{"fan_speed", 101u}, {"locate_timeout", 3601u}}), "Timeout value is too high");
}

TEST_F(Configuration, TakesUnsignedNumbersUnderTheKeysOfItsRows) {
  EXPECT_EQ(change(body({{"fan_speed", "high"}})),
            invalid("Argument: fan_speed not an unsigned integer type"));
  EXPECT_EQ(change(body({{"colour", 1u}})), invalid("Argument: colour not allowed"));
}

TEST_F(Configuration, WithoutASettingIsRefused) {
  expectRefused(body({}), "Configuration request cannot be empty");
}

TEST_F(Configuration, SaysWhichSettingTheStoreRefused) {
  m_session.fanRefuses = true;
  EXPECT_EQ(change(body({{"fan_speed", 10u}, {"locate_timeout", 60u}})),
            refused("INTERNAL_ERROR", "Could not change the fans"));
  EXPECT_EQ(m_session.actions, (std::vector<std::string>{"setLocateTimeout(60)", "setFanSpeed(10)"}));
}

}  // namespace
