#ifndef MIRN_HOST_ANSWERS_JSON_WRITER_H
#define MIRN_HOST_ANSWERS_JSON_WRITER_H

#include <string>

#include "ServiceObject.h"

namespace host {

/// The value as JSON text in UTF-8, the members of an object by ascending key. A double that is no number or
/// not finite is null, since JSON has no such numbers. Raises `std::range_error` on text that cannot be
/// converted to UTF-8.
std::string writeJson(const ovra::data_transfer::ServiceObject& value);

}  // namespace host

#endif
