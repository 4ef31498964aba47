#include "configuration/notification_options.h"

#include <gmock/gmock.h>

#include <sstream>

#include "configuration/configuration_file.h"
#include "support/by_name.h"
#include "support/words_of_failure.h"

namespace host {

namespace {

using testing::IsEmpty;

NotificationTargets targetsIn(const std::string& lines) {
  std::istringstream text(lines);
  Options options;
  applySettings(readConfiguration(text, "f"), options);
  return options.notifications;
}

TEST(NotificationOptions, AreSaidInTheFile) {
  const NotificationTargets targets = targetsIn(
      "webhook = http://u:p@127.0.0.1:8081/a?b=c secret=/s/1\n"
      "webhook = http://localhost/ \"secret=/s/with \\\"two\\\" blanks\"\n"
      "notify-severity = critical\n");
  ASSERT_EQ(targets.webhooks.size(), 2U);
  EXPECT_EQ(targets.webhooks[0].url.origin(), "http://127.0.0.1:8081");
  EXPECT_EQ(targets.webhooks[0].url.target, "/a?b=c");
  EXPECT_EQ(targets.webhooks[0].secretFile, "/s/1");
  EXPECT_EQ(targets.webhooks[0].authorities, "");
  EXPECT_EQ(targets.webhooks[1].secretFile, "/s/with \"two\" blanks");
  EXPECT_EQ(targets.leastSeverity, "critical");
  EXPECT_THAT(targets.command, IsEmpty());
  EXPECT_FALSE(targets.isEmpty());
}

TEST(NotificationOptions, TellNobodyUnlessTold) {
  EXPECT_TRUE(targetsIn("").isEmpty());
  EXPECT_EQ(targetsIn("").leastSeverity, "warning");
}

TEST(NotificationOptions, StandInTheFileOnly) {
  EXPECT_EQ(wordsOfFailure<UsageError>([] {
              parseOptions({"--module", "m", "--webhook", "x"});
            }),
            "unrecognised option '--webhook': it stands in the configuration file only");
  EXPECT_EQ(wordsOfFailure<UsageError>([] {
              parseOptions({"--module", "m", "--notify-command=x"});
            }),
            "unrecognised option '--notify-command': it stands in the configuration file only");
}

struct RefusalRow {
  std::string name;
  std::string line;
  std::string words;
};

class NotificationRefusalTest : public testing::TestWithParam<RefusalRow> {};

TEST_P(NotificationRefusalTest, SaysWhyAndShowsNoUrl) {
  const auto words = wordsOfFailure<UsageError>([] { targetsIn(GetParam().line); });
  EXPECT_EQ(words, "f:1: the key '" + GetParam().line.substr(0, GetParam().line.find(' ')) + "' " +
                       GetParam().words);
}

std::string webhook(const std::string& value) { return "webhook = " + value; }

INSTANTIATE_TEST_SUITE_P(
    Lines, NotificationRefusalTest,
    testing::Values(
        RefusalRow{"NoSecret", webhook("http://u:p@localhost/"),
                   "has no 'secret=FILE', by which a receiver knows this host"},
        RefusalRow{"EmptySecret", webhook("http://u:p@localhost/ secret="), "has nothing behind 'secret='"},
        RefusalRow{"SecretTwice", webhook("http://localhost/ secret=a secret=b"),
                   "is not URL secret=FILE [ca=FILE]"},
        RefusalRow{"AnotherWord", webhook("http://localhost/ secret=a b"),
                   "is not URL secret=FILE [ca=FILE]"},
        RefusalRow{"OpenQuote", webhook("http://localhost/ \"secret=a"), "has a quote without an end"},
        RefusalRow{"InClear", webhook("http://u:p@ops.example/?k=v secret=a"),
                   "goes in clear to another host than the loopback"},
        RefusalRow{"NoUrl", webhook("secret=a"), "is not a URL"},
        RefusalRow{"CaInClear", webhook("http://localhost/ secret=a ca=b"), "has a 'ca=FILE' without https"},
        RefusalRow{"RelativeCommand", "notify-command = mail root",
                   "does not begin with the absolute path of a program"},
        RefusalRow{"Severity", "notify-severity = ok", "is not info, warning, unknown or critical"}),
    ByName());

TEST(NotificationOptions, AreBounded) {
  const std::string line = "webhook = http://localhost/ secret=a\n";
  std::string lines;
  for (int i = 0; i < 16; ++i) lines += line;
  EXPECT_EQ(targetsIn(lines).webhooks.size(), 16U);
  EXPECT_EQ(wordsOfFailure<UsageError>([&] { targetsIn(lines + line); }),
            "f:17: the key 'webhook' is there more than 16 times");
}

TEST(NotificationOptions, SeverityIsSaidOnce) {
  EXPECT_EQ(wordsOfFailure<UsageError>([] { targetsIn("notify-severity = info\nnotify-severity = info\n"); }),
            "f:2: the key 'notify-severity' is said twice");
}

}  // namespace

}  // namespace host
