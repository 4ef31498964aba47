#include "commands/command.h"

#include <algorithm>
#include <boost/algorithm/string/join.hpp>

#include "commands/call.h"
#include "commands/own_commands.h"

namespace mirnctl {

namespace {

constexpr std::size_t kMostWords = 6;

Command commandOf(const Operation& operation) {
  Command command{operation.noun, operation.verb, operation.summary, operation.description, operation.fields};
  command.operation = &operation;
  command.ask = [&operation](const Context& context, const Typed& typed) {
    call(context, operation, typed.arguments);
  };
  return command;
}

/// One object of a list that has no operation of its own.
Command showOf(const Operation& list) {
  const std::string type = list.noun.substr(0, list.noun.size() - 1);
  Field name;
  name.name = name.refersTo = type;
  name.place = Place::kPath;
  name.isRequired = true;
  name.help = "Its id, its name, or how its id begins";
  Command command{list.noun, "show", "All that is known of one " + type + ".", {}, {name}};
  command.operation = &list;
  command.ask = [&list, type](const Context& context, const Typed& typed) {
    showOne(context, list, type, typed.arguments.at(type));
  };
  return command;
}

bool isListOfObjects(const Operation& operation) {
  return operation.verb == "list" && operation.answersList && !operation.columns.empty() &&
         operation.path.find('{') == std::string::npos &&
         std::any_of(operation.answer.begin(), operation.answer.end(),
                     [](const AnswerField& field) { return field.name == "id"; });
}

}  // namespace

bool hasPlace(const Command& command, const Field& field) {
  if (field.place == Place::kPath) return true;
  const auto needed = std::count_if(command.fields.begin(), command.fields.end(), [](const Field& each) {
    return each.place != Place::kPath && each.isRequired;
  });
  return field.isRequired && needed == 1;
}

std::string typeNameOf(const Field& field) {
  if (!field.words.empty() && field.words.size() <= kMostWords)
    return boost::algorithm::join(field.words, "|");
  if (!field.refersTo.empty()) return field.kind == ValueKind::kList ? field.refersTo + ",…" : field.refersTo;
  if (field.kind == ValueKind::kBoolean) return "true|false";
  return field.kind == ValueKind::kNumber ? "NUMBER" : "TEXT";
}

std::string helpOf(const Field& field) {
  if (field.unit.empty()) return field.help;
  return field.help + " [" + field.unit + (isSize(field) ? ", or with K, M, G, T behind it]" : "]");
}

const Command* find(const std::vector<Command>& commands, const std::string& noun, const std::string& verb) {
  const auto found = std::find_if(commands.begin(), commands.end(), [&](const Command& each) {
    return each.noun == noun && each.verb == verb;
  });
  return found == commands.end() ? nullptr : &*found;
}

std::vector<Command> commandsOf(const ApiDocument& document) {
  std::vector<Command> commands = ownCommands(document);
  const auto add = [&commands](Command command) {
    const bool isNew = !command.verb.empty() && find(commands, command.noun, command.verb) == nullptr;
    if (isNew) commands.push_back(std::move(command));
  };
  for (const Operation& operation : document.operations()) add(commandOf(operation));
  for (const Operation& operation : document.operations()) {
    if (isListOfObjects(operation)) add(showOf(operation));
  }
  return commands;
}

}  // namespace mirnctl
