#ifndef MIRN_CLI_COMMANDS_FOR_PEOPLE_H
#define MIRN_CLI_COMMANDS_FOR_PEOPLE_H

#include <boost/json/value.hpp>

#include "commands/context.h"

namespace mirnctl {

/// An answer as people read it: steps and actions as command lines, entries of the history in words, and
/// without what only programs need.
boost::json::value forPeople(const Context& context, const boost::json::value& answer);

}  // namespace mirnctl

#endif
