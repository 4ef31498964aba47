#ifndef MIRN_HOST_INSIGHT_QUERY_PARAMETERS_H
#define MIRN_HOST_INSIGHT_QUERY_PARAMETERS_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "api/endpoint_document.h"

/// Parameters of a query by their names. What is wrong with one raises a `Refusal` 400 that names it. Texts
/// that are told are UTF-8.
namespace host {

using Parameters = std::map<std::wstring, std::wstring>;

/// The number that a text of at most nine digits writes; nothing for any other text.
std::optional<std::int64_t> wholeNumberOf(const std::wstring& text);

/// Nothing may be there that `known` does not tell of.
void requireKnown(const Parameters& parameters, const std::vector<DocumentedParameter>& known);

/// Empty where there is none; one that is there is not empty.
std::string textIn(const Parameters& parameters, const std::string& name);
/// As `textIn`, and one of `words`.
std::string wordIn(const Parameters& parameters, const std::string& name,
                   const std::vector<std::string>& words);
/// A whole number within these bounds, in digits alone.
std::optional<std::int64_t> numberIn(const Parameters& parameters, const std::string& name,
                                     std::int64_t least, std::int64_t most);
/// Milliseconds since 1970, UTC, of an RFC 3339 text.
std::optional<std::int64_t> momentIn(const Parameters& parameters, const std::string& name);

}  // namespace host

#endif
