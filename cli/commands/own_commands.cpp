#include "commands/own_commands.h"

#include <algorithm>
#include <boost/algorithm/string/join.hpp>

#include "commands/call.h"
#include "commands/complete.h"
#include "commands/follow.h"
#include "commands/login.h"
#include "commands/status.h"
#include "commands/top.h"
#include "commands/wait.h"
#include "commands/what_if.h"
#include "exit_status.h"

namespace mirnctl {

namespace {

/// What has its place and is needed.
Field placed(const std::string& name, const std::string& help, std::vector<std::string> words = {}) {
  Field field;
  field.name = name;
  field.place = Place::kPath;
  field.isRequired = true;
  field.help = help;
  field.words = std::move(words);
  return field;
}

Command asking(const std::string& noun, const std::string& verb, const std::string& summary,
               std::vector<Field> fields, std::function<void(const Context&, const Typed&)> ask) {
  Command command{noun, verb, summary, {}, std::move(fields)};
  command.ask = std::move(ask);
  return command;
}

/// Asks no service, or looks for it itself.
Command acting(const std::string& noun, const std::string& verb, const std::string& summary,
               std::vector<Field> fields, std::function<void(const Start&, const Typed&)> act) {
  Command command{noun, verb, summary, {}, std::move(fields)};
  command.act = std::move(act);
  return command;
}

Command withRest(Command command, const std::string& rest) {
  command.rest = rest;
  return command;
}

Command withRecordsOf(const Operation* operation, Command command) {
  command.operation = operation;
  return command;
}

/// Somebody looks on, and may wish to end it.
Command withShortPatience(Command command) {
  command.patience = std::chrono::seconds(5);
  return command;
}

/// In the place of the operation's own command, whose help it has.
Command whatIfCommand(const ApiDocument& document) {
  const Operation* const operation = document.find("whatIf");
  Command command = asking("", "whatif", "Tells what would come of disks that fail or are pulled out.", {},
                           [](const Context& context, const Typed& typed) { whatIf(context, typed.rest); });
  if (operation != nullptr) command.description = operation->description;
  return withRecordsOf(operation, withRest(std::move(command), "fail DISK | pull DISK | wait TIME"));
}

std::vector<std::string> idsOf(const ApiDocument& document) {
  std::vector<std::string> ids;
  for (const Operation& operation : document.operations()) ids.push_back(operation.id);
  return ids;
}

Field job() {
  Field field = placed("id", "Its id");
  field.refersTo = "job";
  return field;
}

void printCompletion(const Start& start, const Typed& typed) {
  const std::string& shell = typed.arguments.at("shell");
  const std::vector<std::string>& known = completedShells();
  if (std::find(known.begin(), known.end(), shell) == known.end()) {
    throw Failure(ExitStatus::kUsage, "nothing is known of the shell '" + shell + "'",
                  "there are " + boost::algorithm::join(known, ", "));
  }
  start.terminal.out << completionScript(shell) << std::flush;
}

}  // namespace

std::vector<Command> ownCommands(const ApiDocument& document) {
  return {
      withRecordsOf(document.find("getHealth"),
                    asking("", "status", "What is wrong, what may help, what is under way", {},
                           [](const Context& context, const Typed&) { status(context); })),
      withRecordsOf(
          document.find("getMachineReadiness"),
          asking("", "ready", "How ready the machine is for the next fault, and what to do about it", {},
                 [](const Context& context, const Typed&) { ready(context); })),
      withShortPatience(asking("", "top", "A live screen of how the machine is", {},
                               [](const Context& context, const Typed&) { top(context); })),
      whatIfCommand(document),
      asking("events", "follow", "Shows what happens as it happens", {},
             [](const Context& context, const Typed&) { follow(context); }),
      asking(
          "jobs", "wait", "Waits for a job to end", {job()},
          [](const Context& context, const Typed& typed) { waitForJob(context, typed.arguments.at("id")); }),
      withRest(asking("", "call",
                      "Asks for any operation of the service, also one that this program does not know",
                      {placed("operation", "Its id, such as listVolumes", idsOf(document))},
                      [](const Context& context, const Typed& typed) {
                        callByName(context, typed.arguments.at("operation"), typed.rest);
                      }),
               "NAME=VALUE"),
      acting("", "login", "Takes a token or a sign-in code on its input, and keeps it in a profile", {},
             [](const Start& start, const Typed&) { logIn(start); }),
      acting("", "completion", "Prints what has a shell complete the words of mirnctl",
             {placed("shell", "Which shell", completedShells())}, printCompletion),
  };
}

}  // namespace mirnctl
