#include "notifications/signature.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "atomic_file.h"
#include "host/identity/open_to_others.h"
#include "support/temporary_folder.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

/// printf '%s' '1700000000.{"event":"raised"}' | openssl dgst -sha256 -hmac SECRET
TEST(Signature, IsThatOfOpenssl) {
  EXPECT_EQ(signatureOf("It is a secret, 32 bytes long. :)", 1700000000, R"({"event":"raised"})"),
            "t=1700000000,v1=19cbccedcc1ce401dbf97891d666dee4432dc36c72df87211e035bd2598ce08f");
}

TEST(Signature, IsOfSecretMomentAndBody) {
  const std::string signature = signatureOf("a secret of some length", 1, "body");
  EXPECT_NE(signature, signatureOf("a secret of some lengtH", 1, "body"));
  EXPECT_NE(signature, signatureOf("a secret of some length", 2, "body"));
  EXPECT_NE(signature.substr(4), signatureOf("a secret of some length", 2, "body").substr(4));
  EXPECT_NE(signature, signatureOf("a secret of some length", 1, "bodY"));
}

class SecretFile : public testing::Test {
 protected:
  void hold(const std::string& text) { makePrivateFile(m_file, text); }

  std::string refusal() const {
    return wordsOfFailure<std::runtime_error>([&] { secretIn(m_file); });
  }

  TemporaryFolder m_folder;
  const std::filesystem::path m_file = std::filesystem::u8path((m_folder / "hook.secret").string());
  const std::string m_lead = "the secret's file " + m_file.u8string() + ' ';
};

TEST_F(SecretFile, HoldsItWithoutTheEndOfItsLine) {
  hold("sixteen bytes or more \r\n");
  EXPECT_EQ(secretIn(m_file), "sixteen bytes or more ");
}

TEST_F(SecretFile, IsThere) { EXPECT_EQ(refusal(), m_lead + "is not there"); }

TEST_F(SecretFile, HoldsOneThatIsNotGuessed) {
  hold("fifteen bytes..\n");
  EXPECT_EQ(refusal(), m_lead + "holds fewer than 16 bytes");
}

TEST_F(SecretFile, IsItsOwnersAlone) {
  hold("sixteen bytes or more");
  openToOthers(m_file);
  EXPECT_NE(refusal().find(m_lead + "others may read or write it"), std::string::npos) << refusal();
}

}  // namespace

}  // namespace host
