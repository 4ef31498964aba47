#ifndef MIRN_CLI_COMMANDS_FINDINGS_H
#define MIRN_CLI_COMMANDS_FINDINGS_H

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <string>

#include "commands/context.h"

namespace mirnctl {

/// What is not as it should be, a sentence each with its severity, and the commands that may help.
void tellFindings(const Context& context, const boost::json::value& findings);

/// A step as a command line; what is not known of its arguments stands in pointed brackets. Empty for one
/// that this program does not know.
std::string commandLineOf(const Context& context, const std::string& operation,
                          const boost::json::object& arguments);

}  // namespace mirnctl

#endif
