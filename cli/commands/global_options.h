#ifndef MIRN_CLI_COMMANDS_GLOBAL_OPTIONS_H
#define MIRN_CLI_COMMANDS_GLOBAL_OPTIONS_H

#include <string>
#include <vector>

#include "commands/context.h"
#include "destination/profile.h"

namespace mirnctl {

/// What the options say that every command has. Plain value.
struct Settings {
  Directions directions;
  Wishes wishes;
};

/// What stands behind an option.
enum class OptionValue { kNone, kText, kWord, kFile, kProfile, kColumn, kColumns };

/// An option of every command.
struct GlobalOption {
  const char* name;
  OptionValue value;
  const char* valueName;  ///< In help and manual.
  const char* help;
  std::vector<std::string> words;  ///< Of a word.
  void (*set)(Settings& settings, const std::string& text);
};

/// All of them, as help and manual tell them.
const std::vector<GlobalOption>& globalOptions();

/// The one of this name, such as "--host"; null where there is none.
const GlobalOption* globalOption(const std::string& name);

}  // namespace mirnctl

#endif
