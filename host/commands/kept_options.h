#ifndef MIRN_HOST_COMMANDS_KEPT_OPTIONS_H
#define MIRN_HOST_COMMANDS_KEPT_OPTIONS_H

#include <string>
#include <vector>

namespace host {

/// The options on a command line as somebody elsewhere is to get them: a word each, with the whole paths of
/// files. Raises `UsageError`.
std::vector<std::string> keptOptions(const std::vector<std::string>& arguments);

}  // namespace host

#endif
