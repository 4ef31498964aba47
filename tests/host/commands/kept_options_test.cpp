#include "commands/kept_options.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "options.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

using Words = std::vector<std::string>;

std::string absolute(const std::string& path) {
  return std::filesystem::absolute(std::filesystem::u8path(path)).u8string();
}

TEST(KeptOptions, AreAWordEach) {
  EXPECT_EQ(keptOptions({"--port", "8081", "--insecure", "--log-requests=no"}),
            (Words{"--port=8081", "--insecure=yes", "--log-requests=no"}));
  EXPECT_EQ(keptOptions({}), Words{});
}

TEST(KeptOptions, NameFilesByTheirWholePaths) {
  EXPECT_EQ(keptOptions({"--config", "host.conf", "--module", "sub/größe.dll"}),
            (Words{"--config=" + absolute("host.conf"), "--module=" + absolute("sub/größe.dll")}));
  const std::string whole = absolute("host.conf");
  EXPECT_EQ(keptOptions({"--config", whole}), Words{"--config=" + whole});
}

TEST(KeptOptions, LeaveTheNameOfALibraryAsItIs) {
  EXPECT_EQ(keptOptions({"--library", "simulator"}), Words{"--library=simulator"});
  EXPECT_EQ(keptOptions({"--library", "./other"}), Words{"--library=" + absolute("./other")});
}

TEST(KeptOptions, AreOptionsThatThereAre) {
  EXPECT_EQ(wordsOfFailure<UsageError>([] {
              keptOptions({"--colour", "red"});
            }),
            "unrecognised option '--colour'");
}

}  // namespace

}  // namespace host
