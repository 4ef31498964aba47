#include "api/request_target.h"

#include <algorithm>
#include <boost/algorithm/hex.hpp>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "answers/answer.h"
#include "text.h"

namespace host {

namespace {

constexpr std::int32_t kBadRequest = 400;

/// Takes what stands ahead of the first `separator` off `rest`, and the separator with it.
std::string_view takeUntil(std::string_view& rest, char separator) {
  const std::size_t end = rest.find(separator);
  const std::string_view part = rest.substr(0, end);
  rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  return part;
}

std::string decodePercent(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded += text[i];
      continue;
    }
    const std::string_view digits = text.substr(i + 1, 2);
    if (digits.find_first_not_of("0123456789ABCDEFabcdef") != std::string_view::npos || digits.size() != 2) {
      throw Refusal(kBadRequest, "The request target holds an invalid percent-encoding");
    }
    boost::algorithm::unhex(digits.begin(), digits.end(), std::back_inserter(decoded));
    i += digits.size();
  }
  return decoded;
}

std::wstring decode(std::string_view text) {
  const std::string decoded = decodePercent(text);
  try {
    return utf8ToWide(decoded);
  } catch (const std::range_error&) {
    throw Refusal(kBadRequest, "The request target is not UTF-8");
  }
}

std::vector<std::wstring> parsePath(std::string_view path, std::size_t most) {
  constexpr std::size_t kUsual = 8;
  std::vector<std::wstring> segments;
  segments.reserve(std::min(most, kUsual));
  for (bool more = !path.empty(); more;) {
    more = path.find('/') != std::string_view::npos;
    std::wstring segment = decode(takeUntil(path, '/'));
    if (segment.empty()) throw Refusal(kBadRequest, "The request target holds an empty segment");
    if (segment.find(L'/') != std::wstring::npos) {
      throw Refusal(kBadRequest, "The request target holds an encoded slash");
    }
    if (segments.size() == most) {
      throw Refusal(kBadRequest, "The request target has too many segments");
    }
    segments.push_back(std::move(segment));
  }
  return segments;
}

std::map<std::wstring, std::wstring> parseQuery(std::string_view query, std::size_t most) {
  std::map<std::wstring, std::wstring> parameters;
  for (bool more = !query.empty(); more;) {
    more = query.find('&') != std::string_view::npos;
    std::string_view value = takeUntil(query, '&');
    std::wstring name = decode(takeUntil(value, '='));
    if (name.find(L'\0') != std::wstring::npos) {
      throw Refusal(kBadRequest, "The request target holds a parameter with a NUL character in its name");
    }
    if (name.empty()) throw Refusal(kBadRequest, "The request target holds a parameter without a name");
    if (parameters.size() == most) {
      throw Refusal(kBadRequest, "The request target has too many parameters");
    }
    if (!parameters.emplace(std::move(name), decode(value)).second) {
      throw Refusal(kBadRequest, "The request target repeats a parameter");
    }
  }
  return parameters;
}

}  // namespace

RequestTarget parseTarget(std::string_view target, const TargetBounds& bounds) {
  if (target.empty() || target.front() != '/') throw Refusal(kBadRequest, "The request target is not a path");
  target.remove_prefix(1);
  const std::string_view path = takeUntil(target, '?');
  return {parsePath(path, bounds.segments), parseQuery(target, bounds.parameters)};
}

}  // namespace host
