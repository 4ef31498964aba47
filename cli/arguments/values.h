#ifndef MIRN_CLI_ARGUMENTS_VALUES_H
#define MIRN_CLI_ARGUMENTS_VALUES_H

#include <boost/json/value.hpp>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "document/operation.h"

namespace mirnctl {

/// What stands on the command line, by the names of an operation's fields.
using Arguments = std::map<std::string, std::string>;

/// `text` as the operation takes it: words in either case and with or without their lines, sizes in the
/// field's unit, numbers as numbers. What refers to objects holds their ids by now. Raises `Failure`.
boost::json::value valueOf(const Field& field, const std::string& text);

/// Whether it takes sizes as people write them.
bool isSize(const Field& field);

/// How the field is written as an option: "raidLevel" is "--raid-level".
std::string optionOf(const std::string& name);

/// The parts of a list with commas between.
std::vector<std::string> partsOf(const std::string& list);

}  // namespace mirnctl

#endif
