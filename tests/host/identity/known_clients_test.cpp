#include "identity/known_clients.h"

#include <gtest/gtest.h>

#include "atomic_file.h"
#include "host/answers/refusal_of.h"
#include "host/identity/moved_clock.h"
#include "identity/secrets.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"

namespace host {

namespace {

using std::chrono::milliseconds;

const std::string kToken = "mirn_" + std::string(43, 'x');
const std::string kSession = "mirn_" + std::string(43, 's');
const std::string kWrong = "mirn_" + std::string(43, 'w');
const std::string kTime = " 2026-01-31T12:00:00.000Z\n";

class KnownClientsTest : public testing::Test {
 protected:
  KnownClientsTest() {
    setRole(Role::kOperate);
    m_tokens.emplace(tableFile(), m_clock.clock(), [](const std::string&) {});
    m_sessions.add(kSession, {"anna", Role::kObserve});
  }

  std::filesystem::path tableFile() const { return (m_folder / "tokens").string(); }
  void setRole(Role role) {
    replaceFile(tableFile(), std::string("backup ") + toText(role) + " " + sha256Hex(kToken) + kTime,
                Readers::kOwner);
  }

  KnownClients clients(bool takesParameter = true) {
    return {*m_tokens, m_sessions, m_delay, {{500, 70}, {{"CN=scraper", Role::kObserve}}}, takesParameter};
  }

  static Credentials bearer(const std::string& token) { return {"Bearer " + token, {}, true, address()}; }
  static Credentials parameter(const std::string& token) { return {"", token, true, address()}; }
  static Client address() {
    Client client;
    client.address = "192.0.2.1";
    return client;
  }

  /// Whom the credentials show, or what they are refused with.
  std::string answerTo(const Credentials& credentials, bool takesParameter = true) {
    try {
      const Identity identity = clients(takesParameter).identify(credentials);
      return identity.name + " may " + toText(identity.role);
    } catch (const Refusal& refusal) {
      m_waited = refusal.wait;
      return std::to_string(refusal.status);
    }
  }

  const TemporaryFolder m_folder;
  MovedClock m_clock;
  std::optional<TokenStore> m_tokens;
  PassingSecrets m_sessions{std::chrono::hours(12), 10, m_clock.clock()};
  GuessDelay m_delay{m_clock.clock()};
  milliseconds m_waited{-1};
};

TEST_F(KnownClientsTest, AreKnownByTheirToken) {
  EXPECT_EQ(answerTo(bearer(kToken)), "backup may operate");
  EXPECT_EQ(answerTo(parameter(kToken)), "backup may operate");
  EXPECT_EQ(answerTo({"bearer   " + kToken + " ", {}, true, {}}), "backup may operate");
}

TEST_F(KnownClientsTest, WhatAConnectionHasProvenLetsNobodyElseIn) {
  ProvenSecret proven;
  const auto shown = [&](const std::string& token) {
    Credentials credentials = bearer(token);
    credentials.proven = &proven;
    return answerTo(credentials);
  };
  EXPECT_EQ(shown(kWrong), "401");
  EXPECT_EQ(proven.secret, "");
  EXPECT_EQ(shown(kToken), "backup may operate");
  EXPECT_EQ(proven.secret, kToken);
  EXPECT_EQ(proven.hash, sha256Hex(kToken));
  EXPECT_EQ(shown(kToken), "backup may operate");
  EXPECT_EQ(shown(kWrong), "401");
  EXPECT_EQ(shown(""), "401");
  EXPECT_EQ(shown(kSession), "anna may observe");
}

TEST_F(KnownClientsTest, WhatAConnectionHasProvenEndsWithItsToken) {
  ProvenSecret proven;
  Credentials credentials = bearer(kToken);
  credentials.proven = &proven;
  EXPECT_EQ(answerTo(credentials), "backup may operate");
  setRole(Role::kObserve);
  m_tokens->reload();
  EXPECT_EQ(answerTo(credentials), "backup may observe");
  replaceFile(tableFile(), "", Readers::kOwner);
  m_tokens->reload();
  EXPECT_EQ(answerTo(credentials), "401");
}

TEST_F(KnownClientsTest, AreKnownByTheirSessionForItsTime) {
  EXPECT_EQ(answerTo(bearer(kSession)), "anna may observe");
  m_clock.pass(std::chrono::hours(12));
  EXPECT_EQ(answerTo(bearer(kSession)), "401");
}

TEST_F(KnownClientsTest, AreNotKnownByTheHash) { EXPECT_EQ(answerTo(bearer(sha256Hex(kToken))), "401"); }

TEST_F(KnownClientsTest, WaitWhenTheyShowSomethingWrong) {
  EXPECT_EQ(answerTo(bearer(kWrong)), "401");
  EXPECT_EQ(m_waited, milliseconds(100));
  EXPECT_EQ(answerTo(parameter(kWrong)), "401");
  EXPECT_EQ(m_waited, milliseconds(200));
  EXPECT_EQ(answerTo({"Basic " + kToken, {}, true, address()}), "401");
  EXPECT_EQ(m_waited, milliseconds(400));
  EXPECT_EQ(answerTo(bearer("")), "401");
  EXPECT_EQ(answerTo(bearer(std::string(100000, 'x'))), "401");
  EXPECT_EQ(answerTo(parameter("")), "401");
  EXPECT_EQ(m_waited, milliseconds(3200));
  EXPECT_EQ(answerTo(bearer(kToken)), "backup may operate");
}

TEST_F(KnownClientsTest, DoNotWaitWhenTheyShowNothing) {
  EXPECT_EQ(answerTo({"", {}, true, address()}), "401");
  EXPECT_EQ(m_waited, milliseconds(0));
  EXPECT_EQ(m_delay.size(), 0U);
}

TEST_F(KnownClientsTest, AreToldHowToShowThemselves) {
  const auto refusal = refusalOf([&] { clients().identify({}); });
  ASSERT_TRUE(refusal);
  EXPECT_EQ(refusal->headers, (Headers{{"WWW-Authenticate", "Bearer"}}));
}

TEST_F(KnownClientsTest, ShowTheirTokenInOnePlace) {
  EXPECT_EQ(answerTo({"Bearer " + kToken, kToken, true, {}}), "400");
  EXPECT_EQ(answerTo({"Bearer " + kToken, "", true, {}}), "400");
}

TEST_F(KnownClientsTest, ShowItInTheUrlWhereThatIsTaken) {
  EXPECT_EQ(answerTo({"", kToken, false, {}}), "400");
  EXPECT_EQ(answerTo(parameter(kToken), false), "400");
  EXPECT_EQ(answerTo(bearer(kToken), false), "backup may operate");
}

TEST_F(KnownClientsTest, AreKnownAsUsersOfTheMachine) {
  Credentials credentials;
  credentials.client.localUser = Client::LocalUser{500, 500};
  EXPECT_EQ(answerTo(credentials), "user:500 may administer");
  credentials.client.localUser = Client::LocalUser{501, 501, {70}};
  EXPECT_EQ(answerTo(credentials), "user:501 may operate");
  credentials.client.localUser = Client::LocalUser{502, 502};
  EXPECT_EQ(answerTo(credentials), "403");
}

TEST_F(KnownClientsTest, AreWhoTheirTokenSaysEvenOnTheSocket) {
  Credentials credentials = bearer(kSession);
  credentials.client.localUser = Client::LocalUser{0, 0};
  EXPECT_EQ(answerTo(credentials), "anna may observe");
  credentials.authorization = "Bearer " + kWrong;
  EXPECT_EQ(answerTo(credentials), "401");
}

TEST_F(KnownClientsTest, AreKnownByTheirCertificate) {
  Credentials credentials;
  credentials.client.certificateSubject = "CN=scraper";
  EXPECT_EQ(answerTo(credentials), "certificate:CN=scraper may observe");
  credentials.client.certificateSubject = "CN=somebody";
  EXPECT_EQ(answerTo(credentials), "401");
}

TEST_F(KnownClientsTest, AreNoLongerKnownWhenTheTokenIsRevoked) {
  const Identity identity = clients().identify(bearer(kToken));
  EXPECT_TRUE(clients().stillHolds(identity));
  replaceFile(tableFile(), "", Readers::kOwner);
  m_clock.pass(TokenStore::kRenewal);
  EXPECT_FALSE(clients().stillHolds(identity));
  EXPECT_EQ(answerTo(bearer(kToken)), "401");
}

TEST_F(KnownClientsTest, DoNotGoOnWhenTheirTokenMayLess) {
  const Identity identity = clients().identify(bearer(kToken));
  setRole(Role::kObserve);
  m_tokens->reload();
  EXPECT_FALSE(clients().stillHolds(identity));
  setRole(Role::kAdminister);
  m_tokens->reload();
  EXPECT_TRUE(clients().stillHolds(identity));
}

TEST_F(KnownClientsTest, GoOnWithTheirSession) {
  const Identity identity = clients().identify(bearer(kSession));
  EXPECT_TRUE(clients().stillHolds(identity));
  m_clock.pass(std::chrono::hours(12));
  EXPECT_FALSE(clients().stillHolds(identity));
  Credentials credentials;
  credentials.client.localUser = Client::LocalUser{0, 0};
  EXPECT_TRUE(clients().stillHolds(clients().identify(credentials)));
}

}  // namespace

}  // namespace host
