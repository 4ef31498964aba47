#ifndef MIRN_HOST_API_JSON_READER_H
#define MIRN_HOST_API_JSON_READER_H

#include <cstddef>
#include <string_view>

#include "ServiceObject.h"

namespace host {

/// Reads the JSON text of a request's body. An empty text is the null value.
///
/// An integer becomes unsigned without a sign and signed with one, when it fits 64 bits; every other number
/// is a double.
///
/// @param maxDepth  how deep arrays and objects may be nested
/// @throws Refusal 400 on text that is no JSON, nested too deep, a number beyond a double, an object with a
/// repeated key
ovra::data_transfer::ServiceObject readJson(std::string_view text, std::size_t maxDepth);

}  // namespace host

#endif
