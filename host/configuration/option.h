#ifndef MIRN_HOST_CONFIGURATION_OPTION_H
#define MIRN_HOST_CONFIGURATION_OPTION_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "options.h"

namespace host {

/// Under which heading a reader looks for an option.
enum class OptionGroup { kService, kBounds, kNotifications, kProgram };

/// What a switch is said with in the configuration file, and may be on the command line.
constexpr char kOn[] = "yes";
constexpr char kOff[] = "no";

/// A value that an option does not take; the text goes on behind the option's name: "is not from 0 to 65535".
class ValueError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A row of the table of options: everything that is known of one.
struct Option {
  std::string name;         ///< Behind "--" on the command line, a key of the configuration file.
  std::string argument;     ///< A word for its value, such as "FILE"; empty for a switch.
  std::string range;        ///< What the value is, such as "from 1 to 16"; empty where any text is one.
  std::string defaultText;  ///< Empty: none, or told by the help.
  std::string help;         ///< A line without a full stop.
  OptionGroup group = OptionGroup::kService;
  bool mayRepeat = false;
  std::function<void(Options&, const std::string&)> take;  ///< Stores a value. Raises `ValueError`.

  bool isSwitch() const { return argument.empty(); }
  /// Those about the program itself have no place in its configuration file.
  bool isForFile() const { return group != OptionGroup::kProgram; }
  /// All users of a machine see its command lines.
  bool isForLine() const { return group != OptionGroup::kNotifications; }
  /// The help, and whether it may repeat.
  std::string fullHelp() const { return mayRepeat ? help + "; may repeat" : help; }
};

// One maker a kind of value. The default is what the member holds at first.

Option textOption(const std::string& name, const std::string& argument, std::string Options::*target,
                  const std::string& help);
/// One that may repeat.
Option listOption(const std::string& name, const std::string& argument,
                  std::vector<std::string> Options::*target, const std::string& help);
Option switchOption(const std::string& name, bool Options::*target, const std::string& help);
Option portOption(const std::string& name, std::uint16_t Options::*target, const std::string& help);
/// From `least` to 2^30.
Option countOption(const std::string& name, std::size_t Options::*target, std::int64_t least,
                   const std::string& help);
/// From `least` to 2^30; one of the bounds.
Option countOption(const std::string& name, std::size_t Limits::*target, std::int64_t least,
                   const std::string& help);
/// In seconds and parts of them, above 0, up to a day; one of the bounds.
Option timeOption(const std::string& name, std::chrono::milliseconds Limits::*target,
                  const std::string& help);

}  // namespace host

#endif
