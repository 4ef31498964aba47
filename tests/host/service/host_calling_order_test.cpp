#include <boost/system/system_error.hpp>
#include <csignal>

#include "host/service/test_host.h"

namespace host {

namespace {

class HostCallingOrderTest : public TestHost, public testing::WithParamInterface<int> {};

TEST_P(HostCallingOrderTest, TheWholeOrderIsWalkedFromDiscoveryToUnloading) {
  serve();
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);

  host().signal(GetParam());

  EXPECT_EQ(host().awaitExit(), 0) << host().errors();
  EXPECT_EQ(
      trace(),
      "discover_plugin\nregister_plugin\nconstruct\ninitialize\ngetHandledPaths\nhandleRequest\nfinish\n"
      "destroy\nunload\n");
}

INSTANTIATE_TEST_SUITE_P(Signals, HostCallingOrderTest, testing::Values(SIGTERM, SIGINT));

class HostStopTest : public TestHost {
 protected:
  /// Until the host has stopped to listen.
  void awaitRefusedConnection() {
    try {
      for (;;) connect();
    } catch (const boost::system::system_error&) {
    }
  }
};

TEST_F(HostStopTest, RequestsUnderWayAreAnsweredBeforeThePluginFinishes) {
  serve();
  HttpConnection client = connect();
  auto blocking = block(client);

  host().signal(SIGTERM);
  awaitRefusedConnection();
  blocking.reset();

  const auto answer = client.receive();
  EXPECT_EQ(answer.result_int(), 204U);
  EXPECT_FALSE(answer.keep_alive());
  client.close();
  EXPECT_EQ(host().awaitExit(), 0) << host().errors();
  EXPECT_NE(trace().find("unblocked\nfinish\ndestroy\nunload\n"), std::string::npos) << trace();
}

TEST_F(HostStopTest, IdleConnectionsDoNotHoldUpTheStop) {
  serve({"--drain-timeout", "86400", "--idle-timeout", "86400"});
  HttpConnection idle = connect();
  EXPECT_EQ(idle.get("/api/v7/test", host().token()).result_int(), 200U);
  HttpConnection silent = connect();

  EXPECT_EQ(host().stop(), 0) << host().errors();
}

TEST_F(HostStopTest, ACallThatNeverEndsIsLeftAfterTheDrainTimeWithoutFinish) {
  serve({"--drain-timeout", "0.1"});
  HttpConnection client = connect();
  const auto blocking = block(client);

  EXPECT_EQ(host().stop(), 1);

  EXPECT_NE(host().errors().find("still under way"), std::string::npos) << host().errors();
  EXPECT_EQ(trace().find("finish"), std::string::npos) << trace();
}

TEST_F(HostStopTest, AFailureToFinishIsToldAndThePluginStillReleased) {
  serve({}, {{"TEST_PLUGIN_FINISH", "throw"}});

  EXPECT_EQ(host().stop(), 1);

  EXPECT_NE(host().errors().find("no end today"), std::string::npos) << host().errors();
  EXPECT_NE(trace().find("finish\ndestroy\nunload\n"), std::string::npos) << trace();
}

}  // namespace

}  // namespace host
