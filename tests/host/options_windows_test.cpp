#include <gtest/gtest.h>

#include "options.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

std::string refusalOf(const std::string& option) {
  return wordsOfFailure<UsageError>([&] { parseOptions({"--module", "m", option, "x"}); });
}

TEST(Options, SayWhyTheyAreNotThere) {
  EXPECT_EQ(refusalOf("--unix-socket"),
            "unrecognised option '--unix-socket': there is no Unix socket on Windows");
  EXPECT_EQ(refusalOf("--tls-key"), "unrecognised option '--tls-key': there is no TLS on Windows");
  EXPECT_EQ(refusalOf("--colour"), "unrecognised option '--colour'");
}

}  // namespace

}  // namespace host
