#include "configuration/configuration_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "configuration/option_table.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

Options optionsIn(const std::string& text) {
  std::istringstream stream(text);
  Options options;
  applySettings(readConfiguration(stream, "f"), options);
  return options;
}

std::string refusalOf(const std::string& text) {
  return wordsOfFailure<UsageError>([&] { optionsIn(text); });
}

TEST(ConfigurationFile, HasAKeyAndAValueInALine) {
  const Options options = optionsIn(
      "# a comment\n\n"
      "module=/lib/a b#c.so\r\n"
      "  port  =  0  \n"
      "\t# another\n"
      "server-name = a.example\n"
      "server-name = b.example\n"
      "log-requests = yes\n"
      "insecure = no\n"
      "token-file = a = b\n"
      "max-values = 7\n"
      "idle-timeout = 0.5");
  EXPECT_EQ(options.module, "/lib/a b#c.so");
  EXPECT_EQ(options.port, 0);
  EXPECT_EQ(options.serverNames, (std::vector<std::string>{"a.example", "b.example"}));
  EXPECT_TRUE(options.logRequests);
  EXPECT_FALSE(options.insecure);
  EXPECT_EQ(options.tokenFile, "a = b");
  EXPECT_EQ(options.limits.bodyValues, 7U);
  EXPECT_EQ(options.limits.idleTime.count(), 500);
}

TEST(ConfigurationFile, MayBeEmpty) { EXPECT_EQ(optionsIn("").port, Options().port); }

TEST(ConfigurationFile, TakesEveryOptionThatIsNotOfTheProgramItself) {
  for (const Option& option : optionTable()) {
    std::istringstream text(option.name + " = 1");
    if (option.isForFile()) {
      EXPECT_EQ(readConfiguration(text, "f").at(0).option, &option);
    } else {
      EXPECT_THROW(readConfiguration(text, "f"), UsageError) << option.name;
    }
  }
}

struct RefusalRow {
  std::string name;
  std::string text;
  std::string reason;
};

class ConfigurationRefusalTest : public testing::TestWithParam<RefusalRow> {};

TEST_P(ConfigurationRefusalTest, IsToldWithFileAndLine) {
  EXPECT_EQ(refusalOf(GetParam().text), GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ConfigurationRefusalTest,
    testing::Values(
        RefusalRow{"WrongKey", "# one\n\ncolour = blue\n", "f:3: unrecognised key 'colour'"},
        RefusalRow{"KeyOfTheCommandLine", "--port = 1", "f:1: unrecognised key '--port'"},
        RefusalRow{"NoKey", "= 1", "f:1: unrecognised key ''"},
        RefusalRow{"NoEqualsSign", "insecure", "f:1: this is not KEY = VALUE"},
        RefusalRow{"Section", "[host]", "f:1: this is not KEY = VALUE"},
        RefusalRow{"NoValue", "port =  ", "f:1: the key 'port' has no value"},
        RefusalRow{"WrongNumber", "module = m\nport = http", "f:2: the key 'port' is not from 0 to 65535"},
        RefusalRow{"WrongTime", "idle-timeout = 0",
                   "f:1: the key 'idle-timeout' is not above 0, up to 86400 seconds"},
        RefusalRow{"WrongSwitch", "insecure = true", "f:1: the key 'insecure' is not yes or no"},
        RefusalRow{"WrongAddress", "address = localhost", "f:1: the key 'address' is not an IP address"},
        RefusalRow{"Twice", "port = 1\nport = 2", "f:2: the key 'port' is said twice"},
        RefusalRow{"ForTheCommandLine", "config = g", "f:1: the key 'config' is for the command line alone"}),
    ByName());

TEST(ConfigurationFile, SaysNothingAsASampleAndEverythingWithItsCommentsTakenAway) {
  EXPECT_EQ(optionsIn(sampleConfiguration()).module, "");
  std::istringstream lines(sampleConfiguration());
  std::size_t keys = 0;
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 110U);
    if (line.empty() || line[1] == ' ' || line[1] == '#') continue;
    std::istringstream text(line.substr(1));
    EXPECT_EQ(readConfiguration(text, "f").size(), 1U) << line;
    ++keys;
  }
  std::size_t options = 0;
  for (const Option& option : optionTable()) options += option.isForFile() ? 1U : 0U;
  EXPECT_EQ(keys, options);
}

class ConfigurationFileTest : public testing::Test {
 protected:
  std::string write(const std::string& text) {
    const auto path = m_folder / "host.conf";
    writeText(path, text);
    return path.string();
  }

 private:
  TemporaryFolder m_folder;
};

TEST_F(ConfigurationFileTest, StandsBehindTheCommandLine) {
  const std::string path =
      write("module = m\nport = 1\nmax-body = 2\nlog-requests = yes\nserver-name = a\nserver-name = b\n");
  const Options options =
      parseOptions({"--config", path, "--port", "3", "--log-requests=no", "--server-name", "c"});
  EXPECT_EQ(options.module, "m");
  EXPECT_EQ(options.port, 3);
  EXPECT_EQ(options.limits.bodyBytes, 2U);
  EXPECT_FALSE(options.logRequests);
  EXPECT_EQ(options.serverNames, (std::vector<std::string>{"c"}));
}

TEST_F(ConfigurationFileTest, IsJudgedEvenWhereTheCommandLineGoesAhead) {
  const std::string path = write("module = m\nport = x\n");
  EXPECT_THROW(parseOptions({"--config", path, "--port", "3"}), UsageError);
}

TEST_F(ConfigurationFileTest, IsNotReadForHelp) {
  EXPECT_TRUE(parseOptions({"--config", write("colour = blue"), "--help"}).help);
}

TEST_F(ConfigurationFileTest, IsToBeThere) {
  const std::string path = write("module = m\n");
  EXPECT_THROW(parseOptions({"--config", path + "x"}), UsageError);
  EXPECT_THROW(parseOptions({"--config", path.substr(0, path.rfind("host.conf"))}), UsageError);
}

}  // namespace

}  // namespace host
