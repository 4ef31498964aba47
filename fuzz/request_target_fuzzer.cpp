// Any text as the target of a request: it is refused with a 400, or split into what it says, and writing the
// parts anew gives the same.
#include "api/request_target.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "answers/answer.h"
#include "property.h"
#include "text.h"

namespace {

std::string encoded(char byte) {
  static constexpr char kDigits[] = "0123456789abcdef";
  const auto code = static_cast<unsigned char>(byte);
  return {'%', kDigits[code / 16], kDigits[code % 16]};
}

/// Every byte as its percent-encoding, so that none of them can separate.
std::string encoded(const std::wstring& text) {
  std::string written;
  for (const char byte : wideToUtf8(text)) written += encoded(byte);
  return written;
}

std::string pathOf(const host::RequestTarget& target) {
  std::string text;
  for (const std::wstring& segment : target.segments) text += '/' + encoded(segment);
  return text.empty() ? "/" : text;
}

std::set<std::string> parametersOf(const host::RequestTarget& target) {
  std::set<std::string> parameters;
  for (const auto& [name, value] : target.parameters) parameters.insert(encoded(name) + '=' + encoded(value));
  return parameters;
}

std::string written(const host::RequestTarget& target) {
  std::string text = pathOf(target);
  char separator = '?';
  for (const std::string& parameter : parametersOf(target)) {
    text += separator + parameter;
    separator = '&';
  }
  return text;
}

/// A well-formed text with every byte percent-encoded, whether it was before or not, except for the first
/// `times` times of `separator`.
std::string normalised(std::string_view text, char separator, std::size_t times) {
  std::string written;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == separator && times > 0) {
      written += separator;
      --times;
    } else if (text[i] == '%') {
      for (const char digit : text.substr(i, 3)) written += static_cast<char>(std::tolower(digit));
      i += 2;
    } else {
      written += encoded(text[i]);
    }
  }
  return written;
}

std::set<std::string> parametersOf(std::string_view query) {
  std::set<std::string> parameters;
  while (!query.empty()) {
    const std::string_view parameter = query.substr(0, query.find('&'));
    const bool without = parameter.find('=') == std::string_view::npos;
    parameters.insert(normalised(parameter, '=', 1) + (without ? "=" : ""));
    query.remove_prefix(std::min(query.size(), parameter.size() + 1));
  }
  return parameters;
}

std::optional<host::RequestTarget> parsed(std::string_view text) {
  try {
    return host::parseTarget(text, {16, 16});
  } catch (const host::Refusal& refusal) {
    fuzz::require(refusal.status == 400, "a target is refused with a 400");
    fuzz::require(refusal.headers.empty(), "the refusal of a target brings no header fields");
    return {};
  }
}

void requireWhatTheTextSays(const host::RequestTarget& target, std::string_view text) {
  const std::string_view path = text.substr(0, text.find('?'));
  fuzz::require(pathOf(target) == normalised(path, '/', path.size()),
                "the segments are what stands between slashes");
  for (const std::wstring& segment : target.segments) {
    fuzz::require(!segment.empty(), "no segment is empty");
    fuzz::require(segment.find(L'/') == std::wstring::npos, "no segment holds a slash");
  }
  const std::string_view query = text.substr(std::min(text.size(), path.size() + 1));
  const auto ands = static_cast<std::size_t>(std::count(query.begin(), query.end(), '&'));
  fuzz::require(target.parameters.size() == (query.empty() ? 0 : ands + 1),
                "there is one parameter around each '&'");
  fuzz::require(parametersOf(target) == parametersOf(query),
                "the parameters are what stands around each '&'");
  fuzz::require(target.parameters.count(L"") == 0, "no parameter is without a name");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto target = parsed(text);
  if (!target) return 0;
  requireWhatTheTextSays(*target, text);
  const auto again = parsed(written(*target));
  fuzz::require(again.has_value(), "what was taken is taken again when written anew");
  fuzz::require(again->segments == target->segments, "written anew, the segments are the same");
  fuzz::require(again->parameters == target->parameters, "written anew, the parameters are the same");
  return 0;
}
