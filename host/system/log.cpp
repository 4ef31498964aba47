#include "system/log.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <cstdio>
#include <stdexcept>

#include "system/report.h"
#include "text.h"
#include "tick_clock.h"
#include "utc_time.h"

namespace host {

namespace {

constexpr std::size_t kLongestText = 1024;
constexpr std::string_view kTokenParameter = "access_token";
constexpr char kMask[] = "***";

bool isUtf8(const std::string& text) {
  try {
    utf8ToWide(text);
    return true;
  } catch (const std::range_error&) {
    return false;
  }
}

/// What a client sent may be of any length and no text at all.
std::string readable(std::string text) {
  if (text.size() > kLongestText) text = text.substr(0, kLongestText) + "...";
  if (isUtf8(text)) return text;
  std::replace_if(
      text.begin(), text.end(), [](char character) { return static_cast<unsigned char>(character) > 0x7F; },
      '?');
  return text;
}

void appendEscaped(std::string& text, unsigned code) {
  char escape[7];
  std::snprintf(escape, sizeof escape, "\\u%04x", code);
  text += escape;
}

/// JSON escapes the control characters below the blank only: DEL, and those of two bytes (U+0080 to U+009F),
/// may drive a terminal as well.
std::string withoutControls(const std::string& json) {
  std::string text;
  for (std::size_t i = 0; i < json.size(); ++i) {
    const auto byte = static_cast<unsigned char>(json[i]);
    const unsigned next = i + 1 < json.size() ? static_cast<unsigned char>(json[i + 1]) : 0;
    if (byte == 0x7F) {
      appendEscaped(text, byte);
    } else if (byte == 0xC2 && next < 0xA0) {
      appendEscaped(text, next);
      ++i;
    } else {
      text += json[i];
    }
  }
  return text;
}

void put(boost::json::object& line, const char* key, const std::string& text) {
  if (!text.empty()) line[key] = readable(text);
}

boost::json::object started(const char* kind, std::int64_t ticks) {
  return {{"log", kind}, {"time", utcText(ticks)}};
}

std::string finished(const boost::json::object& line) {
  return withoutControls(boost::json::serialize(line));
}

int hexDigit(char character) {
  const std::string_view digits = "0123456789abcdef0123456789ABCDEF";
  const std::size_t place = digits.find(character);
  return place == std::string_view::npos ? -1 : static_cast<int>(place % 16);
}

/// Decodes what is encoded well, and leaves the rest.
std::string decoded(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
    const int low = high >= 0 ? hexDigit(text[i + 2]) : -1;
    result += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
    if (low >= 0) i += 2;
  }
  return result;
}

}  // namespace

std::string withoutToken(std::string_view target) {
  std::size_t end = target.find('?');
  if (end == std::string_view::npos) return std::string(target);
  std::string result(target.substr(0, end));
  while (end != std::string_view::npos) {
    const std::size_t start = end;  // '?' or '&'
    end = target.find('&', start + 1);
    const std::string_view parameter =
        target.substr(start, end == std::string_view::npos ? end : end - start);
    const std::string_view name = parameter.substr(0, parameter.find('='));
    const bool isToken = boost::algorithm::icontains(decoded(name), kTokenParameter);
    result += isToken ? std::string(name) + '=' + kMask : std::string(parameter);
  }
  return result;
}

std::string lineOf(const RequestRecord& record, std::int64_t ticks) {
  boost::json::object line = started("request", ticks);
  put(line, "client", record.client);
  put(line, "identity", record.identity);
  put(line, "operation", record.operation);
  put(line, "method", record.method);
  put(line, "target", withoutToken(record.target));
  line["status"] = record.status;
  line["bytes"] = record.bytes;
  line["microseconds"] = record.duration.count();
  return finished(line);
}

std::string lineOf(const AuditRecord& record, std::int64_t ticks) {
  boost::json::object line = started("audit", ticks);
  put(line, "client", record.client);
  put(line, "identity", record.identity);
  put(line, "operation", record.operation);
  boost::json::object objects;
  for (const auto& [name, id] : record.objects) objects[readable(name)] = readable(id);
  line["objects"] = std::move(objects);
  line["outcome"] = record.status < 400 ? "done" : "refused";
  line["status"] = record.status;
  put(line, "reason", record.reason);
  return finished(line);
}

void logRequest(const RequestRecord& record) { writeToErrors(lineOf(record, currentTicks())); }

void logAudit(const AuditRecord& record) { writeToErrors(lineOf(record, currentTicks())); }

}  // namespace host
