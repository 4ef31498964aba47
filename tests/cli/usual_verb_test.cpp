#include "commands/usual_verb.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/by_name.h"

namespace {

using mirnctl::Command;
using Words = std::vector<std::string>;

Command commandOf(const char* noun, const char* verb, bool isOfOne = false) {
  Command command{noun, verb, "Does."};
  if (isOfOne) {
    mirnctl::Field id;
    id.name = "id";
    id.place = mirnctl::Place::kPath;
    id.isRequired = true;
    command.fields = {id};
  }
  return command;
}

std::vector<Command> commands() {
  return {commandOf("", "status"),
          commandOf("events", "list"),
          commandOf("events", "follow"),
          commandOf("health", "show"),
          commandOf("config", "get"),
          commandOf("config", "set"),
          commandOf("actions", "list", true),
          commandOf("alarms", "acknowledge", true)};
}

struct Line {
  const char* name;
  Words typed;
  Words meant;
};

class UsualVerb : public testing::TestWithParam<Line> {};

TEST_P(UsualVerb, IsPutWhereNoneStands) {
  EXPECT_EQ(GetParam().meant, mirnctl::withVerb(commands(), GetParam().typed));
}

INSTANTIATE_TEST_SUITE_P(
    Lines, UsualVerb,
    testing::Values(Line{"Listed", {"events"}, {"events", "list"}},
                    Line{"Shown", {"health"}, {"health", "show"}}, Line{"Got", {"config"}, {"config", "get"}},
                    Line{"AheadOfOptions", {"events", "--time", "9"}, {"events", "list", "--time", "9"}},
                    Line{"AheadOfPlaces", {"actions", "volume"}, {"actions", "list", "volume"}},
                    Line{"BehindGlobalOptions",
                         {"--host", "events", "--yes", "health"},
                         {"--host", "events", "--yes", "health", "show"}},
                    Line{"AsAnOption", {"events", "--follow"}, {"events", "follow"}},
                    Line{"There", {"config", "set"}, {"config", "set"}},
                    Line{"BehindAnOption", {"config", "--yes", "set"}, {"config", "--yes", "set"}},
                    Line{"WithHelp", {"events", "--help"}, {"events", "--help"}},
                    Line{"OfNone", {"alarms"}, {"alarms"}},
                    Line{"Mistyped", {"events", "lst"}, {"events", "lst"}},
                    Line{"AVerbAlone", {"status"}, {"status"}}, Line{"Unknown", {"hats"}, {"hats"}},
                    Line{"Nothing", {}, {}}, Line{"OptionsAlone", {"--yes", "--host"}, {"--yes", "--host"}}),
    ByName());

}  // namespace
