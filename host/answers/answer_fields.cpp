#include "answers/answer_fields.h"

#include <algorithm>
#include <boost/beast/core/string.hpp>
#include <string_view>

namespace host {

namespace {

/// These have no body, whatever the length of one would be.
constexpr unsigned kNoContent = 204;
constexpr unsigned kNotModified = 304;
constexpr std::size_t kUsualBytes = 512;

struct Field {
  std::string_view name;
  std::string_view value;
};

/// No answer is kept by whoever does not ask us again, and no browser makes anything of it but what it is. An
/// answer may have its own.
constexpr Field kUsual[] = {{"Cache-Control", "no-store"},
                            {"X-Content-Type-Options", "nosniff"},
                            {"Content-Security-Policy", "default-src 'none'; frame-ancestors 'none'"},
                            {"Cross-Origin-Resource-Policy", "same-origin"},
                            {"Referrer-Policy", "no-referrer"}};

void append(std::string& text, const Field& field) {
  text.append(field.name).append(": ").append(field.value).append("\r\n");
}

bool has(const Headers& headers, std::string_view name) {
  return std::any_of(headers.begin(), headers.end(),
                     [&](const auto& field) { return boost::beast::iequals(field.first, name); });
}

}  // namespace

std::string answerFields(const Answer& answer) {
  std::string text;
  text.reserve(kUsualBytes);
  for (const Field& field : kUsual) {
    if (!has(answer.headers, field.name)) append(text, field);
  }
  for (const auto& [name, value] : answer.headers) append(text, {name, value});
  if (!answer.body.empty() || answer.isInParts) append(text, {"Content-Type", answer.contentType});
  if (answer.status != kNoContent && answer.status != kNotModified && !answer.isInParts) {
    append(text, {"Content-Length", std::to_string(answer.body.size())});
  }
  return text;
}

Answer rendered(Answer answer) {
  answer.rendered = answerFields(answer);
  return answer;
}

}  // namespace host
