#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>

#include "net/handed_sockets.h"
#include "net/peer.h"
#include "options.h"

namespace host {

namespace {

constexpr int kFirst = 3;  // where a service manager begins
constexpr int kFailed = 1;
constexpr int kUsage = 2;

/// A test that runs in a process of its own, whose descriptors and environment are nobody else's.
class HandedSocketsTest : public testing::Test {
 protected:
  static void giveNames(const std::string& names, const std::string& count, pid_t process = ::getpid()) {
    ::setenv("LISTEN_PID", std::to_string(process).c_str(), 1);
    ::setenv("LISTEN_FDS", count.c_str(), 1);
    ::setenv("LISTEN_FDNAMES", names.c_str(), 1);
  }

  /// One of TCP that listens at any port of the loopback.
  static void giveNetwork(int place) {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    give(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address, place);
  }

  /// A Unix socket without a file.
  static void giveLocal(int place) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const std::string name = abstractName();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    name.copy(address.sun_path + 1, name.size());
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
    give(socket, reinterpret_cast<const sockaddr*>(&address), size, place);
  }

  static std::string abstractName() { return "mirn-handed-" + std::to_string(::getpid()); }

  static bool isForgotten() {
    return !std::getenv("LISTEN_PID") && !std::getenv("LISTEN_FDS") && !std::getenv("LISTEN_FDNAMES");
  }

  static bool isClosedToChildren(int descriptor) { return (::fcntl(descriptor, F_GETFD) & FD_CLOEXEC) != 0; }

  /// Ends the process: with 0 where `test` holds.
  [[noreturn]] static void judge(const std::function<bool()>& test) {
    try {
      std::_Exit(test() ? 0 : kFailed);
    } catch (const UsageError& error) {
      std::cerr << error.what() << std::endl;
      std::_Exit(kUsage);
    }
  }

 private:
  static void give(int socket, const sockaddr* address, socklen_t size, int place) {
    constexpr int kQueue = 8;
    if (::bind(socket, address, size) != 0 || ::listen(socket, kQueue) != 0) std::_Exit(kFailed);
    if (socket != place && ::dup2(socket, place) != place) std::_Exit(kFailed);
  }
};

using HandedSocketsDeathTest = HandedSocketsTest;

TEST_F(HandedSocketsDeathTest, AreNoneWithoutAServiceManager) {
  EXPECT_EXIT(judge([] {
                const HandedSockets sockets = takeHandedSockets();
                return !sockets.network && !sockets.local;
              }),
              testing::ExitedWithCode(0), "");
}

TEST_F(HandedSocketsDeathTest, AreToldApartByTheirFamily) {
  EXPECT_EXIT(judge([] {
                giveLocal(kFirst);
                giveNetwork(kFirst + 1);
                giveNames("one:other", "2");
                const HandedSockets sockets = takeHandedSockets();
                return sockets.local->handle == kFirst && sockets.local->path == '@' + abstractName() &&
                       sockets.network->handle == kFirst + 1 && sockets.network->path.empty() &&
                       tcpEndpoint(sockets.network->endpoint).address().is_loopback() &&
                       tcpEndpoint(sockets.network->endpoint).port() != 0;
              }),
              testing::ExitedWithCode(0), "");
}

TEST_F(HandedSocketsDeathTest, AreNothingToChildren) {
  EXPECT_EXIT(judge([] {
                giveNetwork(kFirst);
                giveNames("http", "1");
                const bool wasOpen = !isClosedToChildren(kFirst) && !isForgotten();
                takeHandedSockets();
                return wasOpen && isClosedToChildren(kFirst) && isForgotten();
              }),
              testing::ExitedWithCode(0), "");
}

TEST_F(HandedSocketsDeathTest, OfAnotherProcessAreLeftAlone) {
  EXPECT_EXIT(judge([] {
                giveNetwork(kFirst);
                giveNames("http", "1", ::getppid());
                const bool hasAny = takeHandedSockets().network.has_value();
                return !hasAny && isForgotten() && !isClosedToChildren(kFirst);
              }),
              testing::ExitedWithCode(0), "");
}

TEST_F(HandedSocketsDeathTest, WithoutACountAreRefused) {
  EXPECT_EXIT(judge([] {
                giveNames("http", "some");
                takeHandedSockets();
                return true;
              }),
              testing::ExitedWithCode(kUsage),
              "the sockets of the service manager cannot be taken over: Invalid argument");
}

}  // namespace

}  // namespace host
