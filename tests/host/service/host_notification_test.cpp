#include <boost/asio/io_context.hpp>
#include <boost/asio/local/datagram_protocol.hpp>
#include <chrono>
#include <csignal>

#include "host/service/test_host.h"

namespace host {

namespace {

using boost::asio::local::datagram_protocol;
using Lines = std::vector<std::string>;

/// Stands where the system's service manager listens.
class HostNotificationTest : public TestHost {
 protected:
  static constexpr std::chrono::milliseconds kWatchdog{200};

  void serveNotifying(Environment environment = {}) {
    environment["NOTIFY_SOCKET"] = path();
    serve({}, environment);
  }

  Environment withWatchdog() const {
    return {{"WATCHDOG_USEC", std::to_string(std::chrono::microseconds(kWatchdog).count())}};
  }

  /// The next message; one that never comes is for the test's time-out.
  std::string receive() {
    std::string text(4096, '\0');
    text.resize(m_socket.receive(boost::asio::buffer(text)));
    return text;
  }

  /// The next message that is no beat.
  std::string receiveNews() {
    std::string text = receive();
    while (text == "WATCHDOG=1") text = receive();
    return text;
  }

  std::string url() { return "http://127.0.0.1:" + std::to_string(host().port()); }

 private:
  std::string path() const { return file("notify"); }

  boost::asio::io_context m_io;
  datagram_protocol::socket m_socket{m_io, datagram_protocol::endpoint(path())};
};

TEST_F(HostNotificationTest, ReadyIsToldWhenTheHostServes) {
  serveNotifying();
  EXPECT_EQ(receive(), "READY=1\nSTATUS=Serving on " + url());
}

TEST_F(HostNotificationTest, AHostThatDoesNotStartIsNeverReady) {
  HostProcess failing({"--module", kNotAPlugin, "--token-file", file("token")},
                      {{"NOTIFY_SOCKET", file("notify")}});
  EXPECT_EQ(failing.awaitExit(), 1);
  serveNotifying();
  EXPECT_EQ(receive(), "READY=1\nSTATUS=Serving on " + url());
}

TEST_F(HostNotificationTest, AReloadIsToldFromItsBeginningToItsEnd) {
  serveNotifying();
  receive();
  host().signal(SIGHUP);
  EXPECT_EQ(receive().rfind("RELOADING=1\nMONOTONIC_USEC=", 0), 0U);
  EXPECT_EQ(receive(), "READY=1\nSTATUS=Serving on " + url());
}

TEST_F(HostNotificationTest, TheStopIsToldWithTheTimeThatItMayTake) {
  serveNotifying();
  receive();
  EXPECT_EQ(host().stop(), 0);
  EXPECT_EQ(receive(), "STOPPING=1\nSTATUS=Stopping\nEXTEND_TIMEOUT_USEC=60000000");
}

TEST_F(HostNotificationTest, AWatchedHostMayBeSilentWhileItStops) {
  serveNotifying(withWatchdog());
  EXPECT_EQ(host().stop(), 0);
  receiveNews();
  EXPECT_EQ(receiveNews(),
            "STOPPING=1\nSTATUS=Stopping\nEXTEND_TIMEOUT_USEC=60000000\nWATCHDOG=1\nWATCHDOG_USEC=60000000");
}

TEST_F(HostNotificationTest, BeatsComeAtHalfOfTheTime) {
  constexpr int kBeats = 10;
  const auto start = std::chrono::steady_clock::now();
  serveNotifying(withWatchdog());
  receiveNews();
  const auto ready = std::chrono::steady_clock::now();
  for (int i = 0; i < kBeats; ++i) EXPECT_EQ(receive(), "WATCHDOG=1");
  const auto end = std::chrono::steady_clock::now();
  EXPECT_GT(end - start, kWatchdog / 2 * (kBeats - 2));  // one may have come ahead of the news
  EXPECT_LT(end - ready, kWatchdog * kBeats);
}

TEST_F(HostNotificationTest, BeatsGoOnWhileThePluginHangs) {
  serveNotifying(withWatchdog());
  HttpConnection blocked = connect();
  auto blocking = block(blocked);
  receiveNews();
  for (int i = 0; i < 5; ++i) EXPECT_EQ(receive(), "WATCHDOG=1");
  blocking.reset();
  EXPECT_EQ(blocked.receive().result_int(), 204U);
}

TEST_F(HostNotificationTest, NobodyIsToldWhoDoesNotListen) {
  serveNotifying();
  receive();
  EXPECT_EQ(host().stop(), 0);
  EXPECT_EQ(receive().find("WATCHDOG"), std::string::npos);
}

}  // namespace

}  // namespace host
