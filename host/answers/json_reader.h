#ifndef MIRN_HOST_ANSWERS_JSON_READER_H
#define MIRN_HOST_ANSWERS_JSON_READER_H

#include <cstddef>
#include <string_view>

#include "ServiceObject.h"

namespace host {

/// Values in one text, unless others are told: each takes many times what its text does.
constexpr std::size_t kMostJsonValues = 20000;

/// Reads the JSON text of a request's body, in which arrays and objects may be nested `maxDepth` deep, and of
/// `maxValues` values, the arrays and objects among them. An empty text is the null value.
///
/// An integer becomes unsigned without a sign and signed with one, when it fits 64 bits; every other number
/// is a double.
///
/// Raises a `Refusal` 400 on text that is no JSON, nested too deep or of too many values, a number beyond a
/// double, and an object with a key that is repeated or holds a NUL character.
ovra::data_transfer::ServiceObject readJson(std::string_view text, std::size_t maxDepth,
                                            std::size_t maxValues = kMostJsonValues);

}  // namespace host

#endif
