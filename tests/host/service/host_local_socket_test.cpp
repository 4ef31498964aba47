#include <sys/stat.h>
#include <sys/un.h>

#include <csignal>
#include <thread>

#include "host/service/local_exchange.h"
#include "host/service/test_host.h"

namespace host {

namespace {

class HostLocalSocketTest : public TestHost {
 protected:
  std::string socketFile() const { return file("sockets/host.sock"); }
  std::vector<std::string> named() const { return {"--unix-socket", socketFile()}; }

  static std::string get(const std::string& path, const std::string& field = "") {
    return localExchange(path,
                         "GET /api/v7 HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n" + field + "\r\n");
  }
};

TEST_F(HostLocalSocketTest, LetsTheHostsOwnUserInWithoutAToken) {
  serve(named());
  EXPECT_EQ(get(socketFile()).rfind("HTTP/1.1 200 ", 0), 0U) << get(socketFile());
}

TEST_F(HostLocalSocketTest, TakesATokenAtItsWord) {
  serve(named());
  EXPECT_EQ(get(socketFile(), "Authorization: Bearer wrong\r\n").rfind("HTTP/1.1 401 ", 0), 0U);
  EXPECT_EQ(get(socketFile(), "Authorization: Bearer " + host().token() + "\r\n").rfind("HTTP/1.1 200 ", 0),
            0U);
}

TEST_F(HostLocalSocketTest, IsForUserAndGroupAndGoesWithTheHost) {
  serve(named());
  struct stat status {};
  ASSERT_EQ(stat(socketFile().c_str(), &status), 0);
  EXPECT_TRUE(S_ISSOCK(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777U, 0660U);
  EXPECT_EQ(host().stop(), 0);
  EXPECT_FALSE(std::filesystem::exists(socketFile()));
}

TEST_F(HostLocalSocketTest, TakesThePlaceOfOneThatIsLeft) {
  serve(named());
  host().signal(SIGKILL);
  host().awaitExit();
  ASSERT_TRUE(std::filesystem::exists(socketFile()));
  serve(named());
  EXPECT_EQ(get(socketFile()).rfind("HTTP/1.1 200 ", 0), 0U);
}

TEST_F(HostLocalSocketTest, LeavesALivingOneAlone) {
  serve(named());
  HostProcess second(
      {"--module", kModule, "--port", "0", "--token-file", file("token"), "--unix-socket", socketFile()});
  EXPECT_EQ(second.awaitExit(), 1);
  EXPECT_EQ(second.errors(),
            "mirn-host: cannot listen on \"" + socketFile() + "\": somebody listens there already\n");
  EXPECT_EQ(get(socketFile()).rfind("HTTP/1.1 200 ", 0), 0U);
}

TEST_F(HostLocalSocketTest, LeavesTheNextHostsSocketAloneAtItsEnd) {
  serve({"--unix-socket", socketFile()});
  HttpConnection client = connect();
  const auto blocking = block(client);
  host().signal(SIGTERM);
  while (std::filesystem::exists(socketFile())) std::this_thread::yield();
  HostProcess next(
      {"--module", kModule, "--port", "0", "--token-file", file("token"), "--unix-socket", socketFile()});
  ASSERT_TRUE(next.awaitServing()) << next.errors();
  *blocking << 'x' << std::flush;  // closing it would not do: the next host has inherited it
  client.receive();
  client.close();
  EXPECT_EQ(host().awaitExit(), 0) << host().errors();
  EXPECT_EQ(get(socketFile()).rfind("HTTP/1.1 200 ", 0), 0U);
  EXPECT_EQ(next.stop(), 0);
}

TEST_F(HostLocalSocketTest, LeavesAFileAlone) {
  std::ofstream(file("file")) << "mine";
  EXPECT_EQ(exitStatus(kModule, {"--unix-socket", file("file")}), 1);
  EXPECT_EQ(readFile(file("file")), "mine");
}

TEST_F(HostLocalSocketTest, IsInTheSessionsFolderUnlessToldOtherwise) {
  if (std::filesystem::exists("/run/mirn")) GTEST_SKIP() << "this machine runs the service";
  serve({}, {{"XDG_RUNTIME_DIR", file("session")}});
  EXPECT_EQ(get(file("session/mirn/host.sock")).rfind("HTTP/1.1 200 ", 0), 0U);
}

TEST_F(HostLocalSocketTest, IsBesideTheTokenWithoutASession) {
  if (std::filesystem::exists("/run/mirn")) GTEST_SKIP() << "this machine runs the service";
  serve({}, {{"XDG_RUNTIME_DIR", ""}});
  EXPECT_EQ(get(file("host.sock")).rfind("HTTP/1.1 200 ", 0), 0U);
  HostProcess second({"--module", kModule, "--port", "0", "--token-file", file("token")},
                     {{"XDG_RUNTIME_DIR", ""}});
  EXPECT_TRUE(second.awaitServing());
  EXPECT_TRUE(second.awaitError("mirn-host: cannot listen on \"" + file("host.sock") + "\""));
  EXPECT_EQ(get(file("host.sock")).rfind("HTTP/1.1 200 ", 0), 0U);
}

TEST_F(HostLocalSocketTest, IsOffWhenSwitchedOff) {
  serve({"--unix-socket", "off"}, {{"XDG_RUNTIME_DIR", ""}});
  EXPECT_FALSE(std::filesystem::exists(file("host.sock")));
  EXPECT_FALSE(std::filesystem::exists("off"));
}

}  // namespace

}  // namespace host
