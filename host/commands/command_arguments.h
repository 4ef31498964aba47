#ifndef MIRN_HOST_COMMANDS_COMMAND_ARGUMENTS_H
#define MIRN_HOST_COMMANDS_COMMAND_ARGUMENTS_H

#include <boost/program_options.hpp>
#include <string>
#include <vector>

namespace host {

/// Stores what stands behind a command's name where `options` say. Raises `UsageError`.
void readArguments(const std::vector<std::string>& arguments,
                   const boost::program_options::options_description& options,
                   const boost::program_options::positional_options_description& positions = {});

}  // namespace host

#endif
