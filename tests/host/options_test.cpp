#include "options.h"

#include <gtest/gtest.h>

#include "configuration/option_table.h"
#include "support/by_name.h"

namespace host {

namespace {

TEST(Options, AreSafeByDefault) {
  const Options options = parseOptions({"--module", "m.so"});
  EXPECT_EQ(options.module, "m.so");
  EXPECT_EQ(options.address, "127.0.0.1");
  EXPECT_EQ(options.port, 8080);
  EXPECT_FALSE(options.insecure);
  EXPECT_FALSE(options.noTokenInUrl);
  EXPECT_FALSE(options.logRequests);
  EXPECT_FALSE(options.simulatorControls);
  EXPECT_GE(options.threads, 1U);
  EXPECT_EQ(options.limits.bodyBytes, 1048576U);
  EXPECT_EQ(options.limits.bodyValues, 20000U);
  EXPECT_EQ(options.limits.targetSegments, 16U);
  EXPECT_EQ(options.limits.targetParameters, 16U);
  EXPECT_TRUE(options.configurationFile.empty());
  EXPECT_TRUE(options.notifications.isEmpty());
}

TEST(Options, ASwitchMayBeSaidWithItsWord) {
  EXPECT_TRUE(parseOptions({"--module", "m", "--log-requests=yes"}).logRequests);
  EXPECT_FALSE(parseOptions({"--module", "m", "--log-requests=no"}).logRequests);
  EXPECT_TRUE(parseOptions({"--log-requests", "--module", "m"}).logRequests);
  EXPECT_FALSE(parseOptions({"--log-requests", "no", "--module", "m"}).logRequests);
  EXPECT_THROW(parseOptions({"--module", "m", "--log-requests", "extra"}), UsageError);
}

TEST(Options, AreTakenFromTheCommandLine) {
  const Options options = parseOptions({"--module=m.so",
                                        "--address",
                                        "::1",
                                        "--port=0",
                                        "--threads",
                                        "3",
                                        "--read-workers",
                                        "5",
                                        "--change-workers",
                                        "6",
                                        "--max-waiting-of-one",
                                        "2",
                                        "--max-waiting",
                                        "0",
                                        "--max-connections",
                                        "9",
                                        "--max-connections-of-one",
                                        "8",
                                        "--max-pipelined",
                                        "3",
                                        "--max-header",
                                        "256",
                                        "--max-header-line",
                                        "64",
                                        "--max-fields",
                                        "7",
                                        "--max-target",
                                        "65",
                                        "--max-body",
                                        "0",
                                        "--max-depth",
                                        "1",
                                        "--max-segments",
                                        "12",
                                        "--max-parameters",
                                        "0",
                                        "--max-values",
                                        "13",
                                        "--header-timeout",
                                        "0.25",
                                        "--body-timeout",
                                        "2",
                                        "--write-timeout",
                                        "3",
                                        "--idle-timeout",
                                        "4",
                                        "--drain-timeout",
                                        "0.0001",
                                        "--token-file",
                                        "t",
                                        "--server-name",
                                        "a.example",
                                        "--server-name",
                                        "b.example",
                                        "--simulator-controls",
                                        "--no-token-in-url",
                                        "--log-requests"});
  EXPECT_EQ(options.address, "::1");
  EXPECT_EQ(options.port, 0);
  EXPECT_EQ(options.threads, 3U);
  EXPECT_EQ(options.limits.readWorkers, 5U);
  EXPECT_EQ(options.limits.changeWorkers, 6U);
  EXPECT_EQ(options.limits.waitingCallsOfOne, 2U);
  EXPECT_EQ(options.limits.waitingCalls, 0U);
  EXPECT_EQ(options.limits.connections, 9U);
  EXPECT_EQ(options.limits.connectionsOfOne, 8U);
  EXPECT_EQ(options.limits.pipelinedRequests, 3U);
  EXPECT_EQ(options.limits.headerBytes, 256U);
  EXPECT_EQ(options.limits.headerLineBytes, 64U);
  EXPECT_EQ(options.limits.headerFields, 7U);
  EXPECT_EQ(options.limits.targetBytes, 65U);
  EXPECT_EQ(options.limits.bodyBytes, 0U);
  EXPECT_EQ(options.limits.bodyDepth, 1U);
  EXPECT_EQ(options.limits.targetSegments, 12U);
  EXPECT_EQ(options.limits.targetParameters, 0U);
  EXPECT_EQ(options.limits.bodyValues, 13U);
  EXPECT_EQ(options.limits.headerTime.count(), 250);
  EXPECT_EQ(options.limits.bodyTime.count(), 2000);
  EXPECT_EQ(options.limits.writeTime.count(), 3000);
  EXPECT_EQ(options.limits.idleTime.count(), 4000);
  EXPECT_EQ(options.limits.drainTime.count(), 1);
  EXPECT_EQ(options.tokenFile, "t");
  EXPECT_EQ(options.serverNames, (std::vector<std::string>{"a.example", "b.example"}));
  EXPECT_TRUE(options.noTokenInUrl);
  EXPECT_TRUE(options.logRequests);
  EXPECT_TRUE(options.simulatorControls);
}

TEST(Options, HelpTellsOfEveryOption) {
  const std::string help = helpText();
  for (const Option& option : optionTable()) {
    const std::string word = option.isForLine() ? "  --" + option.name + ' ' : "  " + option.name + " = ";
    EXPECT_NE(help.find(word), std::string::npos) << option.name;
  }
}

TEST(Options, HelpTellsWhatStandsInTheFileOnly) {
  const std::string help = helpText();
  const std::size_t heading = help.find("\nNotifications, in the configuration file only:\n");
  ASSERT_NE(heading, std::string::npos);
  EXPECT_LT(heading, help.find("  webhook = URL secret=FILE [ca=FILE]\n"));
  EXPECT_EQ(help.find("--webhook"), std::string::npos);
}

TEST(Options, HelpEndsWithWhatIsOfTheProgramItself) {
  const std::string help = helpText();
  EXPECT_GT(help.find("  --help "), help.find("--drain-timeout "));
  EXPECT_GT(help.find("  --version "), help.find("  --help "));
}

struct UsageRow {
  std::string name;
  std::vector<std::string> words;
};

class OptionsUsageTest : public testing::TestWithParam<UsageRow> {};

TEST_P(OptionsUsageTest, MakesNoSense) { EXPECT_THROW(parseOptions(GetParam().words), UsageError); }

INSTANTIATE_TEST_SUITE_P(
    Words, OptionsUsageTest,
    testing::Values(UsageRow{"NoModule", {}}, UsageRow{"NoValue", {"--module"}},
                    UsageRow{"Unknown", {"--module", "m", "--colour", "blue"}},
                    UsageRow{"Abbreviated", {"--mod", "m"}},
                    UsageRow{"Positional", {"--module", "m", "extra"}},
                    UsageRow{"Twice", {"--module", "m", "--module", "n"}},
                    UsageRow{"PortTooLarge", {"--module", "m", "--port", "65536"}},
                    UsageRow{"PortNegative", {"--module", "m", "--port", "-1"}},
                    UsageRow{"PortNoNumber", {"--module", "m", "--port", "http"}},
                    UsageRow{"NoReadWorkers", {"--module", "m", "--read-workers", "0"}},
                    UsageRow{"NoChangeWorkers", {"--module", "m", "--change-workers", "0"}},
                    UsageRow{"NegativeBody", {"--module", "m", "--max-body", "-1"}},
                    UsageRow{"HugeHeader", {"--module", "m", "--max-header", "5000000000"}},
                    UsageRow{"SwitchOfAnotherWord", {"--module", "m", "--insecure=true"}},
                    UsageRow{"NumberWithMore", {"--module", "m", "--max-body", "1k"}},
                    UsageRow{"NoTime", {"--module", "m", "--idle-timeout", "0"}},
                    UsageRow{"TimeIsNoNumber", {"--module", "m", "--idle-timeout", "nan"}},
                    UsageRow{"AddressIsAName", {"--module", "m", "--address", "localhost"}},
                    UsageRow{"OpenAddress", {"--module", "m", "--address", "192.0.2.1"}},
                    UsageRow{"OpenAddressOfSix", {"--module", "m", "--address", "::"}}),
    ByName());

}  // namespace

}  // namespace host
