#ifndef MIRN_CLI_ARGUMENTS_REQUEST_OF_H
#define MIRN_CLI_ARGUMENTS_REQUEST_OF_H

#include <string>

#include "arguments/object_names.h"
#include "arguments/values.h"
#include "document/operation.h"
#include "wire/message.h"

namespace mirnctl {

/// The request that an operation's arguments come to; objects are looked up by their names. Raises `Failure`.
Request requestOf(const Operation& operation, const Arguments& arguments, ObjectNames& names);

/// The type of what a field names: told by its schema, or by the argument "type" beside it; empty: of none.
std::string typeOf(const Field& field, const Arguments& arguments);

}  // namespace mirnctl

#endif
