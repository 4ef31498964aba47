#ifndef MIRN_CLI_COMMANDS_COMMAND_H
#define MIRN_CLI_COMMANDS_COMMAND_H

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "arguments/values.h"
#include "commands/context.h"
#include "destination/profile.h"
#include "document/operation.h"

namespace mirnctl {

struct Command;

/// Makes what answers at a destination, within this time for each of its steps.
using ServiceMaker = std::function<std::unique_ptr<IService>(const Destination&, std::chrono::seconds)>;

inline constexpr std::chrono::seconds kPatience{60};

/// What a command works with that asks no service, or looks for it itself.
struct Start {
  const ApiDocument& document;
  const std::vector<Command>& commands;
  const Directions& directions;
  const Surroundings& surroundings;
  const ServiceMaker& makeService;
  const Wishes& wishes;
  Terminal& terminal;
};

/// What stands behind the name of a command. Plain value.
struct Typed {
  Arguments arguments;            ///< By the names of its fields.
  std::vector<std::string> rest;  ///< The words behind those that have a place.
};

/// What can be typed, with its help. Plain value.
struct Command {
  std::string noun;  ///< Empty: the verb stands alone.
  std::string verb;
  std::string summary;
  std::string description{};
  std::vector<Field> fields{};
  std::string rest{};  ///< What the words behind those with a place are; empty: none follow.
  std::chrono::seconds patience = kPatience;
  const Operation* operation = nullptr;  ///< Whose records it answers; null: none of the document.

  // One of the two.
  std::function<void(const Context&, const Typed&)> ask{};
  std::function<void(const Start&, const Typed&)> act{};

  /// The words of its name, with a blank between.
  std::string name() const { return noun.empty() ? verb : noun + ' ' + verb; }
};

/// Whether the field needs no option's name in front: what the path names does not, nor the one thing that is
/// needed besides.
bool hasPlace(const Command& command, const Field& field);

/// What is typed for a field: "RAID_0|RAID_1", "disk", "NUMBER".
std::string typeNameOf(const Field& field);

/// The field's help, with its unit.
std::string helpOf(const Field& field);

/// Null where there is none.
const Command* find(const std::vector<Command>& commands, const std::string& noun, const std::string& verb);

/// All there are: those of `own_commands.cpp`, those of the document, and "show" of lists that have none.
/// `document` outlives them.
std::vector<Command> commandsOf(const ApiDocument& document);

}  // namespace mirnctl

#endif
