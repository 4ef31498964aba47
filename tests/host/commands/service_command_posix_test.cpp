#include <gtest/gtest.h>

#include <sstream>

#include "commands/service_command.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

TEST(ServiceCommand, IsSystemdsAffair) {
  std::ostringstream out;
  const auto serve = [](const Options&) { return 0; };
  EXPECT_EQ(wordsOfFailure<UsageError>([&] { runServiceCommand({"install"}, serve, out); }),
            "\"service\" is unknown: services are systemd's affair here; its unit is mirn-host.service");
}

}  // namespace

}  // namespace host
