#include "identity/admission.h"

#include <gtest/gtest.h>

#include "answers/answer.h"
#include "host/identity/moved_clock.h"
#include "support/temporary_folder.h"

namespace host {

namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;

class AdmissionTest : public testing::Test {
 protected:
  static Client client() {
    Client client;
    client.address = "192.0.2.1";
    return client;
  }

  std::string nameOf(const std::string& token) const {
    try {
      return m_admission.authenticator().identify({"Bearer " + token, {}, true, {}}).name;
    } catch (const Refusal& refusal) {
      return std::to_string(refusal.status);
    }
  }

  /// What a client is told: "signed in", or the whole answer.
  std::string answerTo(const std::string& code) {
    try {
      m_admission.signIn(code, client());
      return "signed in";
    } catch (const Refusal& refusal) {
      m_waited = refusal.wait;
      const Answer answer = failureAnswer(refusal);
      return std::to_string(answer.status) + ' ' + answer.body.text();
    }
  }

  const TemporaryFolder m_folder;
  MovedClock m_clock;
  Admission m_admission{(m_folder / "token").string(), {}, true, [](const std::string&) {}, m_clock.clock()};
  milliseconds m_waited{0};
};

TEST_F(AdmissionTest, ACodeOpensASessionOfItsRole) {
  const std::string code = m_admission.makeCode({"anna", Role::kOperate});
  EXPECT_EQ(code.size(), 22U);  // 128 bits
  const Admission::Session session = m_admission.signIn(code, client());
  EXPECT_EQ(session.role, Role::kOperate);
  EXPECT_EQ(session.life, std::chrono::hours(12));
  EXPECT_EQ(nameOf(session.token), "anna");
  m_clock.pass(std::chrono::hours(12));
  EXPECT_EQ(nameOf(session.token), "401");
}

TEST_F(AdmissionTest, AUsedALateAndAWrongCodeAreToldTheSame) {
  const std::string used = m_admission.makeCode({"anna", Role::kOperate});
  EXPECT_EQ(answerTo(used), "signed in");
  const std::string toUsed = answerTo(used);
  EXPECT_EQ(toUsed.substr(0, 4), "401 ");
  EXPECT_EQ(m_waited, milliseconds(100));
  const std::string late = m_admission.makeCode({"anna", Role::kOperate});
  m_clock.pass(minutes(10) - milliseconds(1));
  EXPECT_EQ(answerTo("wrong"), toUsed);
  EXPECT_EQ(m_waited, milliseconds(200));
  m_clock.pass(milliseconds(1));
  EXPECT_EQ(answerTo(late), toUsed);
  EXPECT_EQ(answerTo(""), toUsed);
  EXPECT_EQ(answerTo(std::string(100000, 'x')), toUsed);
  EXPECT_EQ(m_waited, milliseconds(1600));
}

TEST_F(AdmissionTest, ACodeIsGoodUntilItsEnd) {
  const std::string code = m_admission.makeCode({"anna", Role::kOperate});
  m_clock.pass(minutes(10) - milliseconds(1));
  EXPECT_EQ(answerTo(code), "signed in");
}

TEST_F(AdmissionTest, ACodeIsNoToken) {
  EXPECT_EQ(nameOf(m_admission.makeCode({"anna", Role::kOperate})), "401");
}

TEST_F(AdmissionTest, ASessionEndsWhenItsOwnerSignsOut) {
  const auto session = m_admission.signIn(m_admission.makeCode({"anna", Role::kObserve}), client());
  const Identity identity = m_admission.authenticator().identify({"Bearer " + session.token, {}, true, {}});
  EXPECT_TRUE(m_admission.signOut(identity));
  EXPECT_EQ(nameOf(session.token), "401");
  EXPECT_FALSE(m_admission.authenticator().stillHolds(identity));
  EXPECT_FALSE(m_admission.signOut(identity));
}

TEST_F(AdmissionTest, ATokenCannotSignOut) {
  const std::string token = readText(m_folder / "token");
  const Identity identity =
      m_admission.authenticator().identify({"Bearer " + token.substr(0, token.find('\n')), {}, true, {}});
  EXPECT_EQ(identity.name, "first");
  EXPECT_FALSE(m_admission.signOut(identity));
  EXPECT_TRUE(m_admission.authenticator().stillHolds(identity));
}

}  // namespace

}  // namespace host
