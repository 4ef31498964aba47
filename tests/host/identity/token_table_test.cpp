#include "identity/token_table.h"

#include <gtest/gtest.h>

#include <future>
#include <set>
#include <stdexcept>

#include "atomic_file.h"
#include "host/identity/open_to_others.h"
#include "identity/secrets.h"
#include "owner_access.h"
#include "support/temporary_folder.h"
#include "support/words_of_failure.h"
#include "utc_time.h"

namespace host {

namespace {

constexpr std::int64_t kNow = 17'000'000'000'000'000;

class TokenTableTest : public testing::Test {
 protected:
  std::string tokenFile() const { return (m_folder / "token").string(); }
  std::string tableFile() const { return tokenFile() + "s"; }
  TokenTable table() const {
    return TokenTable(tokenFile(), [] { return kNow; });
  }

  std::string firstLine() const {
    const std::string token = readText(tokenFile());
    return "first administer " + sha256Hex(token.substr(0, token.find('\n'))) + " " + utcText(kNow) + "\n";
  }

  std::optional<std::string> claim() const {
    return table().claimFirst([](auto) {});
  }

  template <class Action>
  std::string refusalOf(Action action) const {
    return wordsOfFailure<std::runtime_error>(action);
  }

  std::string refusal(const std::string& reason) const {
    return "token table \"" + tableFile() + "\": " + reason;
  }

  const TemporaryFolder m_folder;
};

TEST_F(TokenTableTest, KeepsOfATokenItsHash) {
  const std::string token = table().add("backup", Role::kOperate);
  EXPECT_EQ(table().read().text(),
            firstLine() + "backup operate " + sha256Hex(token) + " " + utcText(kNow) + "\n");
  EXPECT_FALSE(othersMayReach(tableFile()));
}

TEST_F(TokenTableTest, HasANameOnce) {
  table().add("backup", Role::kOperate);
  const std::string before = readText(tableFile());
  EXPECT_EQ(refusalOf([&] { table().add("backup", Role::kObserve); }),
            refusal("there is a token of the name \"backup\""));
  EXPECT_EQ(readText(tableFile()), before);
}

TEST_F(TokenTableTest, RefusesNames) {
  EXPECT_EQ(refusalOf([&] { table().add("two words", Role::kObserve); }),
            refusal("a name is 1 to 64 letters, digits, - _ . @, a letter or digit first"));
  EXPECT_EQ(refusalOf([&] { table().add("first", Role::kObserve); }),
            refusal("\"first\" is the token that the first start makes"));
  EXPECT_EQ(m_folder.entries(), 0U);
}

TEST_F(TokenTableTest, LosesNoBrokenLine) {
  makePrivateFile(tableFile(), "# mine\nbroken\n");
  table().add("backup", Role::kOperate);
  table().revoke("backup");
  EXPECT_EQ(readText(tableFile()), "# mine\nbroken\n");
}

TEST_F(TokenTableTest, RevokesWhatIsThere) {
  EXPECT_EQ(refusalOf([&] { table().revoke("backup"); }), refusal("there is no token of that name"));
}

TEST_F(TokenTableTest, IsNotTouchedWhenOthersMayReachIt) {
  makePrivateFile(tableFile(), "");
  openToOthers(tableFile());
  EXPECT_EQ(refusalOf([&] {
              table().add("backup", Role::kObserve);
            }).rfind(refusal("others may read or write it"), 0),
            0U);
  EXPECT_EQ(readText(tableFile()), "");
}

TEST_F(TokenTableTest, BeginsWithTheFirstToken) {
  const auto token = claim();
  ASSERT_TRUE(token);
  EXPECT_EQ(readText(tokenFile()), *token + "\n");
  EXPECT_EQ(readText(tableFile()), "first administer " + sha256Hex(*token) + " " + utcText(kNow) + "\n");
  EXPECT_EQ(claim(), token);
}

TEST_F(TokenTableTest, TakesTheTokenThatIsThere) {
  makePrivateFile(tokenFile(), std::string(40, 'x') + "\n");
  EXPECT_EQ(claim(), std::string(40, 'x'));
  EXPECT_EQ(table().read().find("first")->hash, sha256Hex(std::string(40, 'x')));
}

TEST_F(TokenTableTest, FollowsTheOwnersOtherToken) {
  claim();
  table().add("backup", Role::kObserve);
  replaceFile(tokenFile(), std::string(40, 'x') + "\n", Readers::kOwner);
  EXPECT_EQ(claim(), std::string(40, 'x'));
  EXPECT_EQ(table().read().find("first")->hash, sha256Hex(std::string(40, 'x')));
  EXPECT_EQ(table().read().entries().size(), 2U);
}

TEST_F(TokenTableTest, BringsNothingBackThatWasRevoked) {
  const auto token = claim();
  table().revoke("first");
  EXPECT_FALSE(std::filesystem::exists(tokenFile()));
  EXPECT_FALSE(claim());
  makePrivateFile(tokenFile(), *token + "\n");
  EXPECT_FALSE(claim());
  EXPECT_TRUE(table().read().entries().empty());
}

TEST_F(TokenTableTest, MakesNoTokenInPlaceOfOneThatItsOwnerPutAway) {
  const auto token = claim();
  std::filesystem::remove(tokenFile());
  EXPECT_FALSE(claim());
  EXPECT_FALSE(std::filesystem::exists(tokenFile()));
  EXPECT_EQ(table().read().find("first")->hash, sha256Hex(*token));
}

TEST_F(TokenTableTest, LosesNothingToThoseWhoChangeItAtOnce) {
  std::vector<std::future<void>> writers;
  for (int i = 0; i < 16; ++i) {
    writers.push_back(std::async(std::launch::async, [this, i] {
      const std::string name = "t" + std::to_string(i);
      table().add(name, Role::kObserve);
      if (i % 2 == 1) table().revoke(name);
      claim();
    }));
  }
  for (auto& writer : writers) writer.get();
  EXPECT_TRUE(table().read().faults().empty());
  EXPECT_EQ(table().read().entries().size(), 1U + 8U);
}

}  // namespace

}  // namespace host
