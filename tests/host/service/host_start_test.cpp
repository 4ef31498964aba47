#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>

#include "host/service/test_host.h"
#include "support/by_name.h"

namespace host {

namespace {

class HostStartTest : public TestHost {
 protected:
  void expectOneLine(const std::string& part) {
    const std::string errors = host().errors();
    EXPECT_NE(errors.find(part), std::string::npos) << errors;
    EXPECT_EQ(errors.compare(0, 11, "mirn-host: "), 0) << errors;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
  }
};

TEST_F(HostStartTest, AMissingModuleIsTold) {
  EXPECT_EQ(exitStatus(file("missing.so")), 1);
  expectOneLine("missing.so");
}

TEST_F(HostStartTest, AFileThatIsNoLibraryIsTold) {
  std::ofstream(file("text.so")) << "no library at all\n";
  EXPECT_EQ(exitStatus(file("text.so")), 1);
  expectOneLine("text.so");
}

TEST_F(HostStartTest, ALibraryWithoutTheExportsIsTold) {
  EXPECT_EQ(exitStatus(kNotAPlugin), 1);
  expectOneLine("it exports no discover_plugin");
}

TEST_F(HostStartTest, AModuleThatRegistersNothingIsTold) {
  EXPECT_EQ(exitStatus(kModule, {}, {{"TEST_PLUGIN_REGISTER", "nothing"}}), 1);
  expectOneLine("registers no service plug-in under the name \"Test plug-in\"");
}

TEST_F(HostStartTest, APluginThatServesNoRequestsIsTold) {
  EXPECT_EQ(exitStatus(kModule, {}, {{"TEST_PLUGIN_REGISTER", "bare"}}), 1);
  expectOneLine("registers no service plug-in");
}

TEST_F(HostStartTest, AFalseInitializeEndsTheHost) {
  EXPECT_EQ(exitStatus(kModule, {}, {{"TEST_PLUGIN_INITIALIZE", "false"}}), 1);
  expectOneLine("the plug-in \"Test plug-in\" could not be initialised\n");
  EXPECT_EQ(trace(), "discover_plugin\nregister_plugin\nconstruct\ninitialize\ndestroy\nunload\n");
}

TEST_F(HostStartTest, ARaisingInitializeEndsTheHostWithItsReason) {
  EXPECT_EQ(exitStatus(kModule, {}, {{"TEST_PLUGIN_INITIALIZE", "throw"}}), 1);
  expectOneLine("could not be initialised: no storage today");
}

TEST_F(HostStartTest, APluginThatRaisesNoExceptionIsTold) {
  EXPECT_EQ(exitStatus(kModule, {}, {{"TEST_PLUGIN_INITIALIZE", "throw-number"}}), 1);
  expectOneLine("the plug-in failed without a reason\n");
  EXPECT_EQ(trace(), "discover_plugin\nregister_plugin\nconstruct\ninitialize\ndestroy\nunload\n");
}

TEST_F(HostStartTest, AFailureOfAnInitialisedPluginIsToldAfterItsEnd) {
  EXPECT_EQ(exitStatus(kModule, {}, {{"TEST_PLUGIN_PATHS", "throw"}}), 1);
  expectOneLine("no paths today\n");
  EXPECT_NE(trace().find("finish\ndestroy\nunload\n"), std::string::npos) << trace();
}

TEST_F(HostStartTest, AUsedPortIsToldBeforeThePluginIsInitialised) {
  serve();
  HostProcess second(
      {"--module", kModule, "--port", std::to_string(host().port()), "--token-file", file("token")},
      {{"TEST_PLUGIN_TRACE", file("second")}});
  EXPECT_EQ(second.awaitExit(), 1);
  EXPECT_NE(second.errors().find("cannot listen on 127.0.0.1:" + std::to_string(host().port())),
            std::string::npos)
      << second.errors();
  EXPECT_EQ(readFile(file("second")), "discover_plugin\nregister_plugin\nconstruct\ndestroy\nunload\n");
}

TEST_F(HostStartTest, ABadCommandLineHasAStatusOfItsOwn) {
  EXPECT_EQ(exitStatus(kModule, {"--colour", "blue"}), 2);
  expectOneLine("--colour");
}

TEST_F(HostStartTest, AnotherAddressNeedsToBeCalledInsecure) {
  EXPECT_EQ(exitStatus(kModule, {"--address", "0.0.0.0"}), 2);
  expectOneLine("--insecure");

  serve({"--address", "0.0.0.0", "--insecure"});
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
}

TEST_F(HostStartTest, TheIpv6LoopbackIsSafe) {
  serve({"--address", "::1"});
  EXPECT_EQ(host().stop(), 0) << host().errors();
  EXPECT_NE(host().output().find("on http://[::1]:"), std::string::npos) << host().output();
}

TEST_F(HostStartTest, HelpAndVersionNeedNothingElse) {
  HostProcess help({"--help"});
  EXPECT_EQ(help.awaitExit(), 0);
  EXPECT_NE(help.output().find("--token-file"), std::string::npos);
  HostProcess version({"--version"});
  EXPECT_EQ(version.awaitExit(), 0);
  EXPECT_EQ(version.output(), "mirn-host 5.4.0.1465\n");
}

TEST_F(HostStartTest, TheTokenIsMadeOnceAndKeptForItsOwner) {
  serve();
  const std::string token = host().token();
  EXPECT_EQ(token.rfind("mirn_", 0), 0U);
  EXPECT_EQ(get("/api/v7").result_int(), 200U);
  EXPECT_EQ(readFile(file("token")), token + "\n");
  struct stat status {};
  ASSERT_EQ(stat(file("token").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  EXPECT_EQ(host().stop(), 0);
  EXPECT_EQ(host().output().find(token), std::string::npos);
  EXPECT_EQ(host().errors().find(token), std::string::npos);

  serve();
  EXPECT_EQ(host().token(), token);
}

TEST_F(HostStartTest, TokensComeAndGoWhileTheHostServes) {
  serve();
  HostProcess add({"token", "add", "backup", "observe", "--token-file", file("token")});
  ASSERT_EQ(add.awaitExit(), 0) << add.errors();
  const std::string token = add.output().substr(0, add.output().find('\n'));
  const auto statusWithToken = [&] { return connect().get("/api/v7", token).result_int(); };
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (statusWithToken() != 200U && std::chrono::steady_clock::now() < deadline) {
  }
  EXPECT_EQ(statusWithToken(), 200U);
  HostProcess revoke({"token", "revoke", "backup", "--token-file", file("token")});
  ASSERT_EQ(revoke.awaitExit(), 0) << revoke.errors();
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (statusWithToken() == 200U && std::chrono::steady_clock::now() < end) {
  }
  EXPECT_EQ(statusWithToken(), 401U);
  HostProcess again({"token", "revoke", "backup", "--token-file", file("token")});
  EXPECT_EQ(again.awaitExit(), 1);
  HostProcess wrong({"token", "show"});
  EXPECT_EQ(wrong.awaitExit(), 2);
}

TEST_F(HostStartTest, ATokenThatOthersMayReadIsRefused) {
  std::ofstream(file("token")) << std::string(64, 'a') << '\n';
  ASSERT_EQ(chmod(file("token").c_str(), 0640), 0);
  EXPECT_EQ(exitStatus(kModule), 1);
  expectOneLine("others may read or write it");
}

TEST_F(HostStartTest, AFileWithoutATokenIsRefused) {
  std::ofstream(file("token")) << "short\n";
  ASSERT_EQ(chmod(file("token").c_str(), 0600), 0);
  EXPECT_EQ(exitStatus(kModule), 1);
  expectOneLine("holds no token");
}

TEST_F(HostStartTest, ARequestToReadTheTokensAgainEndsNothing) {
  serve();
  host().signal(SIGHUP);
  ASSERT_TRUE(host().awaitError("mirn-host: the tokens were read again"));
  EXPECT_EQ(get("/api/v7/test").result_int(), 200U);
  host().signal(SIGHUP);
  EXPECT_EQ(host().stop(), 0);
  EXPECT_NE(trace().find("finish\n"), std::string::npos);
}

TEST_F(HostStartTest, HealthAndReadinessAreToldToAnybody) {
  serve();
  EXPECT_EQ(connect().get("/healthz", "").body(), R"({"status":"working"})");
  EXPECT_EQ(connect().get("/readyz", "").body(), R"({"status":"ready"})");
}

struct DefaultFileRow {
  std::string name;
  std::string stateHome;
  std::string expected;
};

class HostDefaultTokenFileTest : public TestHost, public testing::WithParamInterface<DefaultFileRow> {};

TEST_P(HostDefaultTokenFileTest, TheTokenStandsBelowTheUsersStateDirectory) {
  const std::string stateHome = GetParam().stateHome.empty() ? "" : file(GetParam().stateHome);
  HostProcess process({"--module", kModule, "--port", "0"},
                      {{"HOME", file("home")}, {"XDG_STATE_HOME", stateHome}});
  ASSERT_TRUE(process.awaitServing()) << process.errors();
  EXPECT_EQ(readFile(file(GetParam().expected)), process.token() + "\n");
}

INSTANTIATE_TEST_SUITE_P(Files, HostDefaultTokenFileTest,
                         testing::Values(DefaultFileRow{"Named", "state", "state/mirn/token"},
                                         DefaultFileRow{"Home", "", "home/.local/state/mirn/token"}),
                         ByName());

}  // namespace

}  // namespace host
