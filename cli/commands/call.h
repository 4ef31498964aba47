#ifndef MIRN_CLI_COMMANDS_CALL_H
#define MIRN_CLI_COMMANDS_CALL_H

#include <string>
#include <vector>

#include "arguments/values.h"
#include "commands/context.h"

namespace mirnctl {

/// Asks for an operation and shows what it answers. A change goes over its plan: what is lost by it is
/// told, and somebody agrees, before it is sent for the machine of the plan alone. Raises `Failure`.
void call(const Context& context, const Operation& operation, const Arguments& arguments);

/// The same of one that goes by this id, which the service may know alone; its arguments are `pairs`, each
/// written as NAME=VALUE.
void callByName(const Context& context, const std::string& id, const std::vector<std::string>& pairs);

/// One record of a list, whole.
void showOne(const Context& context, const Operation& list, const std::string& type, const std::string& name);

}  // namespace mirnctl

#endif
