#include <algorithm>
#include <fstream>

#include "host/service/test_host.h"

namespace host {

namespace {

class HostConfigurationTest : public TestHost {
 protected:
  std::string write(const std::string& text) {
    std::ofstream(file("host.conf")) << text;
    return file("host.conf");
  }

  /// Of a host that gets a file alone; what it said then stands in `m_said`.
  int statusWith(const std::string& text, const std::vector<std::string>& more = {}) {
    std::vector<std::string> arguments{"--config", write(text)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    HostProcess process(arguments);
    const int status = process.awaitExit();
    m_said = status == 0 ? process.output() : process.errors();
    return status;
  }

  std::string m_said;
};

TEST_F(HostConfigurationTest, TheFileIsEnoughToServe) {
  HostProcess process({"--config", write("module = " + kModule + "\nport = 0\ntoken-file = " + file("token") +
                                         "\nmax-segments = 3\n")});
  ASSERT_TRUE(process.awaitServing()) << process.errors();
  EXPECT_EQ(HttpConnection(process.port()).get("/api/v7/test", process.token()).result_int(), 200U);
  EXPECT_EQ(HttpConnection(process.port()).get("/api/v7/test/a", process.token()).result_int(), 400U);
  EXPECT_EQ(process.stop(), 0) << process.errors();
}

TEST_F(HostConfigurationTest, AWrongFileIsToldWithItsLine) {
  EXPECT_EQ(statusWith("module = m\ncolour = blue\n"), 2);
  EXPECT_EQ(m_said,
            "mirn-host: " + file("host.conf") + ":2: unrecognised key 'colour' (--help tells more)\n");
}

TEST_F(HostConfigurationTest, AGoodOneIsSaidToBeGoodAndStartsNothing) {
  EXPECT_EQ(statusWith("module = " + kModule + "\ntoken-file = " + file("token") + '\n', {"--check-config"}),
            0)
      << m_said;
  EXPECT_EQ(m_said, "The configuration is good\n");
  EXPECT_FALSE(std::filesystem::exists(file("token")));
}

TEST_F(HostConfigurationTest, ACheckLooksForTheFiles) {
  EXPECT_EQ(statusWith("module = " + file("none") + '\n', {"--check-config"}), 2);
  EXPECT_NE(m_said.find("the option '--module' names no file: " + file("none")), std::string::npos) << m_said;
  EXPECT_EQ(statusWith("module = " + kModule + "\nlibrary = nobodys\n", {"--check-config"}), 2);
  EXPECT_NE(m_said.find("the option '--library' names no file: "), std::string::npos) << m_said;
  EXPECT_EQ(statusWith("module = " + kModule + "\nlibrary = ..\n", {"--check-config"}), 2);
  EXPECT_EQ(statusWith("module = " + kModule + "\ntls-certificate = /c\ntls-key = /k\n", {"--check-config"}),
            2);
  EXPECT_NE(m_said.find("/c"), std::string::npos) << m_said;
}

TEST_F(HostConfigurationTest, ACheckTakesTheCommandLineToo) {
  HostProcess good({"--module", kModule, "--check-config"});
  EXPECT_EQ(good.awaitExit(), 0) << good.errors();
  HostProcess bad({"--module", kModule, "--port", "x", "--check-config"});
  EXPECT_EQ(bad.awaitExit(), 2);
}

}  // namespace

}  // namespace host
