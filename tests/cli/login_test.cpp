#include "commands/login.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "commands/command_line.h"
#include "fake_service.h"
#include "lent_service.h"
#include "support/temporary_folder.h"

namespace {

using mirnctl::ExitStatus;

class Login : public testing::Test {
 protected:
  Login() {
    m_surroundings.configuration = (m_folder.path() / "config").string();
    m_service.answer("GET /api/v1/session", R"({"name":"me","role":"operate"})");
    m_service.answer("POST /api/v1/session", R"({"token":"mirn_session","role":"observe","lifeSeconds":9})",
                     201);
  }

  ExitStatus logIn(const std::string& typed, std::vector<std::string> options = {},
                   const std::string& host = "server:81") {
    options.insert(options.begin(), {"login", "--host", host});
    std::istringstream in(typed);
    std::ostringstream out, err;
    mirnctl::Terminal terminal{in, out, err};
    const auto lend = [this](const mirnctl::Destination& destination, std::chrono::seconds) {
      m_tokens.push_back(destination.token);
      return std::make_unique<LentService>(m_service);
    };
    const ExitStatus status = runCommand(options, m_document, m_surroundings, lend, terminal);
    m_out = out.str();
    m_err = err.str();
    return status;
  }

  std::string content(const std::string& name) const {
    std::ifstream stream((m_folder.path() / name).string());
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  TemporaryFolder m_folder;
  const mirnctl::ApiDocument m_document{mirnctl::embeddedDocument()};
  mirnctl::Surroundings m_surroundings;
  FakeService m_service;
  std::vector<std::string> m_tokens;
  std::string m_out, m_err;
};

TEST_F(Login, KeepsATokenThatTheServiceTakes) {
  EXPECT_EQ(ExitStatus::kDone, logIn(" mirn_secret \r\n")) << m_err;
  EXPECT_EQ("GET /api/v1/session\n", m_service.lines());
  EXPECT_EQ(std::vector<std::string>{"mirn_secret"}, m_tokens);
  EXPECT_EQ("mirn_secret\n", content("default.token"));
  EXPECT_EQ(0u, content("config").rfind("[default]\nhost = http://server:81\n", 0)) << content("config");
  EXPECT_EQ("Signed in at http://server:81 as me, who may operate; this is the profile default now.\n",
            m_out);
}

TEST_F(Login, KeepsTheTokenOfASessionThatACodeMakes) {
  for (const char* typed : {"c0de\n", "http://server:81/#code=c0de\n"}) {
    m_service.asked.clear();
    EXPECT_EQ(ExitStatus::kDone, logIn(typed, {"--profile", "far", "--ca-file", "/ca"})) << m_err;
    EXPECT_EQ("POST /api/v1/session\nGET /api/v1/session\n", m_service.lines());
    EXPECT_EQ(R"({"code":"c0de"})", m_service.asked.front().body);
    EXPECT_EQ("mirn_session\n", content("far.token"));
    EXPECT_NE(std::string::npos, content("config").find("[far]\nca-file = /ca\nhost = http://server:81\n"));
  }
}

TEST_F(Login, TakesWhatIsNoCodeForAToken) {
  m_service.answers["POST /api/v1/session"] = {{401, {}, ""}};
  EXPECT_EQ(ExitStatus::kDone, logIn("of-another-kind\n")) << m_err;
  EXPECT_EQ("of-another-kind\n", content("default.token"));
}

TEST_F(Login, ChangesNothingUnlessTheServiceTakesIt) {
  m_service.answers["GET /api/v1/session"] = {{401, {}, ""}};
  m_service.answers["POST /api/v1/session"] = {{401, {}, ""}};
  for (const char* typed : {"mirn_wrong\n", "c0de\n", "http://server:81/#code=c0de\n"}) {
    EXPECT_EQ(ExitStatus::kUnauthorised, logIn(typed));
    EXPECT_EQ("", content("default.token") + content("config"));
  }
}

TEST_F(Login, AsksNobodyWithoutAToken) {
  for (const char* typed : {"", "\n", "mirn_\x03", "  \n"}) {
    EXPECT_EQ(ExitStatus::kRefused, logIn(typed));
  }
  EXPECT_EQ(ExitStatus::kUsage, logIn("mirn_secret\n", {"--token-file", "/t"}));
  EXPECT_EQ(ExitStatus::kUsage, logIn("mirn_secret\n", {"--profile", "../x"}));
  EXPECT_EQ(ExitStatus::kUsage, logIn("mirn_secret\n", {}, "unix:/s"));
  EXPECT_TRUE(m_service.asked.empty());
  EXPECT_EQ("mirnctl: unix:/s takes no token\n  say --host http://HOST:PORT\n", m_err);
  EXPECT_EQ("", content("default.token") + content("config"));
}

}  // namespace
