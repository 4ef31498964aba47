#include "answers/record.h"

#include <fmt/format.h>

#include <boost/json/serialize.hpp>
#include <cstdlib>

#include "answers/text_width.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr double kMebibyte = 1024.0 * 1024.0;

bool isNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

void addNames(const json::value& value, const std::string& prefix, std::vector<std::string>& names) {
  if (!value.is_object() || value.get_object().empty()) {
    names.push_back(prefix);
    return;
  }
  for (const auto& member : value.get_object()) {
    addNames(member.value(),
             prefix.empty() ? std::string(member.key()) : prefix + '.' + std::string(member.key()), names);
  }
}

/// An object of the machine by its name, else by its id; another one by its members.
std::string nameOf(const json::object& object) {
  for (const char* member : {"name", "id", "text", "by"}) {
    const json::value* const value = object.if_contains(member);
    if (value != nullptr && value->is_string() && !value->get_string().empty()) {
      return std::string(value->get_string());
    }
  }
  std::string text;
  for (const auto& member : object) {
    text += (text.empty() ? "" : " ") + std::string(member.key()) + ' ' + textForPeople(member.value(), {});
  }
  return text;
}

/// "2026-11-22T19:47:05.676Z" as "2026-11-22 19:47:05Z"; everything else as it is.
std::string withoutFractions(const std::string& text) {
  constexpr std::string_view kForm = "dddd-dd-ddTdd:dd:dd.dddZ";
  if (text.size() != kForm.size()) return text;
  for (std::size_t place = 0; place < kForm.size(); ++place) {
    const bool isDigit = text[place] >= '0' && text[place] <= '9';
    if (kForm[place] == 'd' ? !isDigit : text[place] != kForm[place]) return text;
  }
  return text.substr(0, 10) + ' ' + text.substr(11, 8) + 'Z';
}

}  // namespace

json::array recordsOf(const json::value& answer) {
  if (answer.is_array()) return answer.get_array();
  if (answer.is_object()) {
    const json::object& members = answer.get_object();
    const json::value* const items = members.if_contains("items");
    const bool isList = members.contains("next") || members.size() == 1;
    if (isList && items != nullptr && items->is_array()) return items->get_array();
  }
  return answer.is_null() ? json::array() : json::array({answer});
}

const json::value* memberOf(const json::object& record, std::string_view name) {
  if (const json::value* const member = record.if_contains(name)) return member;
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos) return nullptr;
  const json::value* const outer = record.if_contains(name.substr(0, dot));
  return outer == nullptr ? nullptr : memberOf(*outer, name.substr(dot + 1));
}

const json::value* memberOf(const json::value& record, std::string_view name) {
  return record.is_object() ? memberOf(record.get_object(), name) : nullptr;
}

std::string plainText(const json::value& value) {
  if (value.is_null()) return {};
  return value.is_string() ? std::string(value.get_string()) : json::serialize(value);
}

std::string textAt(const json::value& record, std::string_view name) {
  const json::value* const value = memberOf(record, name);
  return value == nullptr ? std::string() : plainText(*value);
}

std::string printableAt(const json::value& record, std::string_view name) {
  return printable(textAt(record, name));
}

std::string wordsOfEntry(const json::value& entry) {
  for (const char* member : {"details.text", "details.description"}) {
    std::string words = printableAt(entry, member);
    if (!words.empty()) return words;
  }
  return printableAt(entry, "operation") + ' ' + printableAt(entry, "object.name");
}

std::string withBinaryUnit(double bytes) {
  constexpr const char* kUnits[] = {"B", "KiB", "MiB", "GiB", "TiB", "PiB"};
  std::size_t unit = 0;
  while (bytes >= 1023.95 && unit + 1 < std::size(kUnits)) {
    bytes /= 1024;
    ++unit;
  }
  return fmt::format(unit == 0 ? "{:.0f} {}" : "{:.1f} {}", bytes, kUnits[unit]);
}

std::string durationText(std::int64_t seconds) {
  constexpr std::int64_t kMinute = 60;
  constexpr std::int64_t kHour = 60 * kMinute;
  constexpr std::int64_t kDay = 24 * kHour;
  if (seconds >= kDay)
    return std::to_string(seconds / kDay) + " d " + std::to_string(seconds % kDay / kHour) + " h";
  if (seconds >= kHour) {
    return std::to_string(seconds / kHour) + " h " + std::to_string(seconds % kHour / kMinute) + " min";
  }
  if (seconds >= kMinute) return std::to_string(seconds / kMinute) + " min";
  return std::to_string(seconds) + " s";
}

std::string textForPeople(const json::value& value, std::string_view unit) {
  if (value.is_null()) return "-";
  if (value.is_object()) return nameOf(value.get_object());
  if (value.is_array()) {
    std::string text;
    for (const json::value& element : value.get_array()) {
      if (!text.empty()) text += ", ";
      text += textForPeople(element, unit);
    }
    return text.empty() ? "-" : text;
  }
  if (value.is_bool()) return value.get_bool() ? "yes" : "no";
  const std::string text = plainText(value);
  if (text.empty()) return "-";
  if (unit == "bytes" && isNumber(text)) return withBinaryUnit(std::strtod(text.c_str(), nullptr));
  if (unit == "MiB" && isNumber(text)) return withBinaryUnit(std::strtod(text.c_str(), nullptr) * kMebibyte);
  if (unit == "percent" && isNumber(text)) return text + " %";
  if (unit == "s" && isNumber(text)) return durationText(std::strtoll(text.c_str(), nullptr, 10));
  return withoutFractions(text);
}

std::vector<std::string> namesOf(const json::value& record) {
  std::vector<std::string> names;
  if (record.is_object()) addNames(record, {}, names);
  return names;
}

}  // namespace mirnctl
