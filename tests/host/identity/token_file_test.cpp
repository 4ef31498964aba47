#include "identity/token_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <future>
#include <set>

#include "atomic_file.h"
#include "host/identity/open_to_others.h"
#include "identity/token.h"
#include "owner_access.h"
#include "support/temporary_folder.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

class TokenFileTest : public testing::Test {
 protected:
  std::string file(const std::string& name) const { return m_folder.path().string() + "/" + name; }

  static std::string contentOf(const std::string& path) {
    std::ifstream stream(std::filesystem::u8path(path));
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  /// What a load of the file is refused with; no time passes.
  static std::string refusalOf(
      const std::string& path, const Pause& pause = [](auto) {}) {
    return wordsOfFailure<std::runtime_error>([&] { loadOrCreateToken(path, pause); });
  }

  std::string refusalOfContent(const std::string& content) {
    makePrivateFile(file("token"), content);
    return refusalOf(file("token"));
  }

  std::string refusal(const std::string& reason) const {
    return "token file \"" + file("token") + "\": " + reason;
  }

  const TemporaryFolder m_folder;
};

TEST_F(TokenFileTest, IsMadeWithANewToken) {
  const std::string token = loadOrCreateToken(file("token"), sleepFor);
  EXPECT_EQ(token.rfind(kTokenPrefix, 0), 0U) << token;
  EXPECT_EQ(contentOf(file("token")), token + "\n");
  EXPECT_EQ(m_folder.entries(), 1U);
  EXPECT_NE(loadOrCreateToken(file("another"), sleepFor), token);
}

TEST_F(TokenFileTest, KeepsItsToken) {
  const std::string token = loadOrCreateToken(file("token"), sleepFor);
  EXPECT_EQ(loadOrCreateToken(file("token"), sleepFor), token);
}

TEST_F(TokenFileTest, MayHoldATokenOfOnesOwn) {
  const std::string token(40, 'x');
  makePrivateFile(file("token"), token + "\nand other lines\n");
  EXPECT_EQ(loadOrCreateToken(file("token"), sleepFor), token);
}

TEST_F(TokenFileTest, ComesWithMissingDirectories) {
  const std::string path = file("ordn\xC3\xBCng/\xE2\x82\xAC/token");
  const std::string token = loadOrCreateToken(path, sleepFor);
  EXPECT_EQ(contentOf(path), token + "\n");
  EXPECT_FALSE(othersMayReach(std::filesystem::u8path(file("ordn\xC3\xBCng"))));
}

TEST_F(TokenFileTest, IsForItsOwnerAlone) {
  loadOrCreateToken(file("token"), sleepFor);
  EXPECT_FALSE(othersMayReach(file("token")));
}

TEST_F(TokenFileTest, IsRefusedWhenOthersMayReadIt) {
  loadOrCreateToken(file("token"), sleepFor);
  openToOthers(file("token"));
  EXPECT_EQ(refusalOf(file("token")),
            refusal("others may read or write it (" + privacyRemedy(file("token")) + " helps)"));
}

TEST_F(TokenFileTest, IsRefusedWithoutAToken) {
  EXPECT_EQ(refusalOfContent("short\n"), refusal("holds no token"));
}

TEST_F(TokenFileTest, IsRefusedWhenItStaysEmptyAndStaysAsItIs) {
  makePrivateFile(file("token"), "");
  std::chrono::milliseconds waited{0};
  EXPECT_EQ(refusalOf(file("token"), [&](std::chrono::milliseconds time) { waited += time; }),
            refusal("is empty"));
  EXPECT_EQ(waited, kTokenFilePatience);
  EXPECT_TRUE(std::filesystem::is_empty(file("token")));
}

TEST_F(TokenFileTest, IsReadWhenAnotherStartHasFilledIt) {
  const std::string token(40, 'x');
  makePrivateFile(file("token"), "");
  int pauses = 0;
  const auto fill = [&](std::chrono::milliseconds) {
    if (++pauses == 3) std::ofstream(file("token")) << token << std::endl;
  };
  EXPECT_EQ(loadOrCreateToken(file("token"), fill), token);
  EXPECT_EQ(pauses, 3);
}

TEST_F(TokenFileTest, IsMadeWhenAnEmptyOneHasGone) {
  makePrivateFile(file("token"), "");
  const std::string token =
      loadOrCreateToken(file("token"), [&](auto) { std::filesystem::remove(file("token")); });
  EXPECT_EQ(contentOf(file("token")), token + "\n");
}

TEST_F(TokenFileTest, IsRefusedAtOnceForWhatNoStartDoes) {
  const auto fail = [](std::chrono::milliseconds) { FAIL() << "it waits"; };
  makePrivateFile(file("token"), "short\n");
  EXPECT_EQ(refusalOf(file("token"), fail), refusal("holds no token"));
  std::filesystem::create_directory(file("directory"));
  EXPECT_NE(refusalOf(file("directory"), fail), "no refusal");
  openToOthers(file("token"));
  EXPECT_NE(refusalOf(file("token"), fail), "no refusal");
}

TEST_F(TokenFileTest, IsRefusedWhenItIsNoFile) {
  std::filesystem::create_directory(file("token"));
  EXPECT_EQ(refusalOf(file("token")), refusal("is not a regular file"));
}

TEST_F(TokenFileTest, CannotStandInAFile) {
  makePrivateFile(file("file"), "no directory");
  const std::string text = refusalOf(file("file/token"));
  EXPECT_EQ(text.find("token file \"" + file("file/token") + "\": "), 0U) << text;
}

TEST_F(TokenFileTest, IsTheSameForAllThatStartAtOnce) {
  std::vector<std::future<std::string>> starts;
  for (int i = 0; i < 16; ++i) {
    starts.push_back(
        std::async(std::launch::async, [this] { return loadOrCreateToken(file("new/token"), sleepFor); }));
  }
  std::set<std::string> tokens;
  for (auto& start : starts) tokens.insert(start.get());
  EXPECT_EQ(tokens.size(), 1U);
  using Iterator = std::filesystem::directory_iterator;
  EXPECT_EQ(std::distance(Iterator(file("new")), Iterator()), 1);
}

TEST_F(TokenFileTest, AFileThatIsThereStaysAsItIs) {
  makePrivateFile(file("token"), "first");
  makePrivateFile(file("token"), "second");
  EXPECT_EQ(contentOf(file("token")), "first");
}

}  // namespace

}  // namespace host
