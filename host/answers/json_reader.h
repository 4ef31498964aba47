#ifndef MIRN_HOST_ANSWERS_JSON_READER_H
#define MIRN_HOST_ANSWERS_JSON_READER_H

#include <cstddef>
#include <string_view>

#include "ServiceObject.h"

namespace host {

/// What one text may hold.
struct JsonBounds {
  std::size_t depth;   ///< Of arrays and objects in each other.
  std::size_t values;  ///< Arrays and objects among them; each takes many times what its text does.
};

/// Reads the JSON text of a request's body. An empty text is the null value.
///
/// An integer becomes unsigned without a sign and signed with one, when it fits 64 bits; every other number
/// is a double.
///
/// Raises a `Refusal` 400 on text that is no JSON or goes beyond `bounds`, a number beyond a double, and an
/// object with a key that is repeated or holds a NUL character.
ovra::data_transfer::ServiceObject readJson(std::string_view text, const JsonBounds& bounds);

}  // namespace host

#endif
