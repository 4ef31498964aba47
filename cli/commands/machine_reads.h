#ifndef MIRN_CLI_COMMANDS_MACHINE_READS_H
#define MIRN_CLI_COMMANDS_MACHINE_READS_H

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>
#include <string>

#include "commands/context.h"

namespace mirnctl {

/// What the operation of this id answers. Raises `Failure`.
boost::json::value askedOf(const Context& context, const char* operation, const std::string& query = {});

/// The latest entries of the history, the last one first; none where none is kept or to be read. Raises
/// `Failure` where one may not ask.
boost::json::array latestEntries(const Context& context, int most);

}  // namespace mirnctl

#endif
