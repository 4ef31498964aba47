#include "commands/token_command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "identity/secrets.h"
#include "identity/token_table.h"
#include "options.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

class TokenCommandTest : public testing::Test {
 protected:
  std::string tokenFile() const { return (m_folder / "token").string(); }

  std::string output(std::vector<std::string> words) {
    words.insert(words.end(), {"--token-file", tokenFile()});
    std::ostringstream out;
    std::ostringstream errors;
    runTokenCommand(words, out, errors);
    m_errors = errors.str();
    return out.str();
  }

  const TemporaryFolder m_folder;
  std::string m_errors;
};

TEST_F(TokenCommandTest, AddPrintsTheTokenAndNothingElse) {
  const std::string token = output({"add", "backup", "operate"});
  EXPECT_TRUE(std::regex_match(token, std::regex("mirn_[A-Za-z0-9_-]{43}\n"))) << token;
  const auto entry = TokenTable(tokenFile()).read().find("backup");
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->role, Role::kOperate);
  EXPECT_EQ(entry->hash, sha256Hex(token.substr(0, token.size() - 1)));
}

TEST_F(TokenCommandTest, ListPrintsNoSecret) {
  output({"add", "backup", "operate"});
  const std::string time = R"( \d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z\n)";
  const std::string text = output({"list"});
  EXPECT_TRUE(std::regex_match(text, std::regex("first administer" + time + "backup operate" + time)))
      << text;
  EXPECT_EQ(m_errors, "");
}

TEST_F(TokenCommandTest, ListTellsWhatIsBroken) {
  output({"add", "backup", "operate"});
  std::ofstream(tokenFile() + "s", std::ios::app) << "nonsense\n";
  output({"list"});
  EXPECT_EQ(m_errors, "mirn-host: line 3 lets nobody in: it is not NAME ROLE SHA256 CREATED\n");
}

TEST_F(TokenCommandTest, TheConfigurationNamesTheFile) {
  const std::string configuration = (m_folder / "host.conf").string();
  std::ofstream(configuration) << "port = 9090\ntoken-file = " << tokenFile() << '\n';
  std::ostringstream out;
  std::ostringstream errors;
  runTokenCommand({"add", "backup", "operate", "--config", configuration}, out, errors);
  EXPECT_TRUE(TokenTable(tokenFile()).read().find("backup"));
}

TEST_F(TokenCommandTest, WhatIsSaidGoesAheadOfTheConfiguration) {
  const std::string configuration = (m_folder / "host.conf").string();
  std::ofstream(configuration) << "token-file = " << (m_folder / "other").string() << '\n';
  output({"add", "backup", "operate", "--config", configuration});
  EXPECT_TRUE(TokenTable(tokenFile()).read().find("backup"));
  EXPECT_FALSE(std::filesystem::exists((m_folder / "others").string()));
}

TEST_F(TokenCommandTest, AWrongConfigurationAddsNothing) {
  const std::string configuration = (m_folder / "host.conf").string();
  std::ofstream(configuration) << "token-fiel = " << tokenFile() << '\n';
  EXPECT_EQ(wordsOfFailure<UsageError>([&] {
              output({"add", "backup", "operate", "--config", configuration});
            }),
            configuration + ":1: unrecognised key 'token-fiel'");
  EXPECT_FALSE(std::filesystem::exists(tokenFile() + "s"));
}

TEST_F(TokenCommandTest, RevokeTakesAway) {
  output({"add", "backup", "operate"});
  EXPECT_EQ(output({"revoke", "backup"}), "");
  EXPECT_FALSE(TokenTable(tokenFile()).read().find("backup"));
  EXPECT_THROW(output({"revoke", "backup"}), std::runtime_error);
}

TEST_F(TokenCommandTest, HelpBeginsWithTheWays) {
  const std::string help = output({"--help"});
  EXPECT_EQ(help.substr(0, help.find("Options")),
            "Usage: mirn-host token add NAME ROLE [options]\n"
            "       mirn-host token list [options]\n"
            "       mirn-host token revoke NAME [options]\n"
            "Adds, lists and revokes the tokens by which a host lets clients in; a running host\n"
            "follows within two seconds. ROLE is observe, operate or administer. `add` prints the\n"
            "token, which is kept nowhere else; `list` prints name, role and time of each.\n\n");
}

TEST_F(TokenCommandTest, HelpTellsOfEverything) {
  const std::string help = output({"--help"});
  for (const char* const word : {"add NAME ROLE", "list", "revoke NAME", "--token-file", "administer"}) {
    EXPECT_NE(help.find(word), std::string::npos) << word;
  }
  EXPECT_EQ(m_folder.entries(), 0U);
}

struct WordsRow {
  std::string name;
  std::vector<std::string> words;
};

class TokenCommandUsageTest : public TokenCommandTest, public testing::WithParamInterface<WordsRow> {};

TEST_P(TokenCommandUsageTest, MakesNoSense) {
  EXPECT_THROW(output(GetParam().words), UsageError);
  EXPECT_EQ(m_folder.entries(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Words, TokenCommandUsageTest,
                         testing::Values(WordsRow{"Nothing", {}}, WordsRow{"OtherVerb", {"remove", "backup"}},
                                         WordsRow{"NoRole", {"add", "backup"}},
                                         WordsRow{"OtherRole", {"add", "backup", "root"}},
                                         WordsRow{"TooMuch", {"add", "backup", "operate", "observe"}},
                                         WordsRow{"NoName", {"revoke"}},
                                         WordsRow{"ListOfOne", {"list", "backup"}},
                                         WordsRow{"OtherOption", {"list", "--colour"}},
                                         WordsRow{"Twice", {"list", "--token-file", "x"}}),
                         ByName());

}  // namespace

}  // namespace host
