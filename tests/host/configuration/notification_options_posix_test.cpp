#include <gmock/gmock.h>

#include <sstream>

#include "configuration/configuration_file.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

using testing::ElementsAre;

NotificationTargets targetsIn(const std::string& lines) {
  std::istringstream text(lines);
  Options options;
  applySettings(readConfiguration(text, "f"), options);
  return options.notifications;
}

TEST(NotificationOptionsOnPosix, HaveHttps) {
  const NotificationTargets targets =
      targetsIn("webhook = https://ops.example:8443/a secret=/s/1 ca=/s/ca.pem\n");
  ASSERT_EQ(targets.webhooks.size(), 1U);
  EXPECT_TRUE(targets.webhooks[0].url.isEncrypted);
  EXPECT_EQ(targets.webhooks[0].url.origin(), "https://ops.example:8443");
  EXPECT_EQ(targets.webhooks[0].authorities, "/s/ca.pem");
  EXPECT_EQ(targetsIn("webhook = https://ops.example/a secret=/s/1").webhooks[0].url.origin(),
            "https://ops.example");
}

TEST(NotificationOptionsOnPosix, HaveACommandOfWords) {
  const NotificationTargets targets =
      targetsIn("notify-command = /usr/bin/mail -s \"An alarm\" root@localhost $HOME ; ls\n");
  EXPECT_THAT(targets.command,
              ElementsAre("/usr/bin/mail", "-s", "An alarm", "root@localhost", "$HOME", ";", "ls"));
  EXPECT_EQ(wordsOfFailure<UsageError>([] { targetsIn("notify-command = /a\nnotify-command = /b\n"); }),
            "f:2: the key 'notify-command' is said twice");
}

}  // namespace

}  // namespace host
