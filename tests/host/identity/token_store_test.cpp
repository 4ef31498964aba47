#include "identity/token_store.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "atomic_file.h"
#include "host/identity/moved_clock.h"
#include "host/identity/open_to_others.h"
#include "support/temporary_folder.h"

namespace host {

namespace {

using std::chrono::milliseconds;

const std::string kHashA(64, 'a');
const std::string kHashB(64, 'b');
const std::string kTime = " 2026-01-31T12:00:00.000Z\n";
const std::string kLineA = "backup observe " + kHashA + kTime;
const std::string kLineB = "night operate " + kHashB + kTime;

class TokenStoreTest : public testing::Test {
 protected:
  void write(const std::string& text) { replaceFile(path(), text, Readers::kOwner); }
  std::string path() const { return (m_folder / "tokens").string(); }

  TokenStore& store() {
    if (!m_store) {
      m_store.emplace(std::filesystem::u8path(path()), m_clock.clock(),
                      [this](const std::string& line) { m_reports.push_back(line); });
    }
    return *m_store;
  }

  std::string nameOf(const std::string& hash) {
    const auto entry = store().find(hash);
    return entry ? entry->name : "nobody";
  }

  const TemporaryFolder m_folder;
  MovedClock m_clock;
  std::vector<std::string> m_reports;
  std::optional<TokenStore> m_store;
};

TEST_F(TokenStoreTest, FindsByTheHash) {
  write(kLineA + kLineB);
  EXPECT_EQ(nameOf(kHashA), "backup");
  EXPECT_EQ(nameOf(kHashB), "night");
  EXPECT_EQ(store().find(kHashB)->role, Role::kOperate);
  EXPECT_EQ(nameOf(std::string(64, 'c')), "nobody");
  EXPECT_EQ(nameOf(""), "nobody");
}

TEST_F(TokenStoreTest, HoldsNothingWithoutAFile) {
  EXPECT_EQ(nameOf(kHashA), "nobody");
  EXPECT_TRUE(m_reports.empty());
}

TEST_F(TokenStoreTest, SeesAChangeAfterItsTime) {
  write(kLineA);
  store();
  write(kLineB);
  m_clock.pass(TokenStore::kRenewal - milliseconds(1));
  EXPECT_EQ(nameOf(kHashA), "backup");
  EXPECT_EQ(nameOf(kHashB), "nobody");
  m_clock.pass(milliseconds(1));
  EXPECT_EQ(nameOf(kHashB), "night");
  EXPECT_EQ(nameOf(kHashA), "nobody");
  EXPECT_LE(TokenStore::kRenewal, milliseconds(2000));
}

TEST_F(TokenStoreTest, SeesAChangeAtOnceWhenTold) {
  write(kLineA);
  store();
  write(kLineB);
  store().reload();
  EXPECT_EQ(nameOf(kHashA), "nobody");
  EXPECT_EQ(nameOf(kHashB), "night");
}

TEST_F(TokenStoreTest, TellsOfABrokenLineOnce) {
  write("nonsense\n" + kLineA);
  EXPECT_EQ(nameOf(kHashA), "backup");
  store().reload();
  ASSERT_EQ(m_reports.size(), 1U);
  EXPECT_EQ(m_reports[0],
            "token table \"" + path() + "\", line 1 lets nobody in: it is not NAME ROLE SHA256 CREATED");
}

TEST_F(TokenStoreTest, LosesAllTokensWithItsFile) {
  write(kLineA);
  store();
  std::filesystem::remove(path());
  store().reload();
  EXPECT_EQ(nameOf(kHashA), "nobody");
}

TEST_F(TokenStoreTest, KeepsWhatItHasWhenOthersMayWriteTheFile) {
  write(kLineA);
  store();
  write(kLineA + kLineB);
  openToOthers(path());
  store().reload();
  store().reload();
  EXPECT_EQ(nameOf(kHashA), "backup");
  EXPECT_EQ(nameOf(kHashB), "nobody");
  ASSERT_EQ(m_reports.size(), 1U);
  EXPECT_NE(m_reports[0].find("is left as it was read before: it others may read or write it"),
            std::string::npos)
      << m_reports[0];
}

TEST_F(TokenStoreTest, DoesNotBeginWithAFileThatOthersMayReach) {
  write(kLineA);
  openToOthers(path());
  EXPECT_THROW(store(), std::runtime_error);
}

}  // namespace

}  // namespace host
