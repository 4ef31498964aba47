#include <gtest/gtest.h>

#include "configuration/option_table.h"
#include "options.h"
#include "support/by_name.h"

namespace host {

namespace {

std::vector<std::string> withTls(std::vector<std::string> words) {
  words.insert(words.end(), {"--module", "m", "--tls-certificate", "c", "--tls-key", "k"});
  return words;
}

TEST(Options, AnAddressIsOpenToOthersWithTls) {
  const Options options =
      parseOptions(withTls({"--address", "192.0.2.1", "--tls-client-ca", "a", "--tls-client",
                            "observe:CN=x,O=y", "--tls-client", "operate:CN=z"}));
  EXPECT_EQ(options.certificateRoles,
            (std::map<std::string, Role>{{"CN=x,O=y", Role::kObserve}, {"CN=z", Role::kOperate}}));
}

TEST(Options, AUnixSocketHasANameOrIsOff) {
  EXPECT_TRUE(parseOptions({"--module", "m"}).hasUnixSocket);
  EXPECT_FALSE(parseOptions({"--module", "m", "--unix-socket", "off"}).hasUnixSocket);
  EXPECT_EQ(parseOptions({"--module", "m", "--unix-socket", "/s"}).unixSocket, "/s");
  EXPECT_TRUE(parseOptions({"--module", "m", "--unix-socket", "/s"}).needsUnixSocket);
}

TEST(Options, TheTableHasTlsAndTheUnixSocket) {
  for (const char* option : {"unix-socket", "tls-certificate", "tls-key", "tls-client-ca", "tls-client"}) {
    EXPECT_NE(findOption(option), nullptr) << option;
  }
}

struct UsageRow {
  std::string name;
  std::vector<std::string> words;
};

class TlsUsageTest : public testing::TestWithParam<UsageRow> {};

TEST_P(TlsUsageTest, MakesNoSense) { EXPECT_THROW(parseOptions(GetParam().words), UsageError); }

INSTANTIATE_TEST_SUITE_P(
    Words, TlsUsageTest,
    testing::Values(UsageRow{"CertificateWithoutKey", {"--module", "m", "--tls-certificate", "c"}},
                    UsageRow{"KeyWithoutCertificate", {"--module", "m", "--tls-key", "k"}},
                    UsageRow{"AuthorityWithoutTls", {"--module", "m", "--tls-client-ca", "a"}},
                    UsageRow{"ClientWithoutAuthority", withTls({"--tls-client", "observe:CN=x"})},
                    UsageRow{"ClientWithoutRole", withTls({"--tls-client-ca", "a", "--tls-client", "CN=x"})},
                    UsageRow{"ClientWithoutSubject",
                             withTls({"--tls-client-ca", "a", "--tls-client", "observe:"})},
                    UsageRow{"ClientTwice", withTls({"--tls-client-ca", "a", "--tls-client", "observe:CN=x",
                                                     "--tls-client", "operate:CN=x"})}),
    ByName());

}  // namespace

}  // namespace host
