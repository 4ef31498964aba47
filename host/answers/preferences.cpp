#include "answers/preferences.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <string_view>

#include "answers/field_list.h"

namespace host {

namespace {

std::string_view unquoted(std::string_view text) {
  const bool isQuoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

std::optional<std::chrono::seconds> secondsIn(std::string_view digits) {
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos) return {};
  std::chrono::seconds seconds{0};
  for (const char digit : digits)
    seconds = std::min(seconds * 10 + std::chrono::seconds(digit - '0'), kLongestWait);
  return seconds;
}

}  // namespace

std::optional<std::chrono::seconds> waitIn(const std::optional<std::string>& prefer) {
  if (!prefer) return {};
  for (const std::string_view preference : partsOf(*prefer, ',')) {
    const auto words = partsOf(preference, ';');
    if (words.empty()) continue;
    const std::size_t equals = words.front().find('=');
    if (!boost::algorithm::iequals(trimmed(words.front().substr(0, equals)), "wait")) continue;
    if (equals == std::string_view::npos) return {};
    return secondsIn(unquoted(trimmed(words.front().substr(equals + 1))));
  }
  return {};
}

}  // namespace host
