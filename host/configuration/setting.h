#ifndef MIRN_HOST_CONFIGURATION_SETTING_H
#define MIRN_HOST_CONFIGURATION_SETTING_H

#include <string>
#include <vector>

#include "configuration/option.h"

namespace host {

/// What a user said of an option.
struct Setting {
  const Option* option;  ///< A row of the table.
  std::string value;
  std::string name;  ///< As a user knows it, such as "the option '--port'".
};

/// Stores all of them. Raises `UsageError` with the name of the one that is wrong, or of one that comes again
/// and may not repeat.
void applySettings(const std::vector<Setting>& settings, Options& options);

/// Those of `lower` about which `upper` says nothing, and all of `upper`.
std::vector<Setting> merged(const std::vector<Setting>& lower, const std::vector<Setting>& upper);

}  // namespace host

#endif
