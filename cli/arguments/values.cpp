#include "arguments/values.h"

#include <algorithm>
#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/json/parse.hpp>
#include <cctype>
#include <cmath>
#include <cstdlib>

#include "exit_status.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

[[noreturn]] void refuse(const Field& field, const std::string& text, const std::string& advice) {
  throw Failure(ExitStatus::kUsage, field.name + " cannot be '" + text + "'", advice);
}

/// Without what people leave out of a word: case, lines and blanks.
std::string bare(const std::string& word) {
  std::string bare;
  for (const char c : word) {
    if (c != '_' && c != '-' && c != ' ')
      bare += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return bare;
}

std::string wordOf(const Field& field, const std::string& text) {
  const auto isMeant = [&text](const std::string& word) { return bare(word) == bare(text); };
  const auto found = std::find_if(field.words.begin(), field.words.end(), isMeant);
  if (found == field.words.end()) {
    refuse(field, text, "it is one of " + boost::algorithm::join(field.words, ", "));
  }
  return *found;
}

/// The power of 1024 that a suffix such as "G", "GB" or "GiB" stands for; -1 where it is none.
int powerOf(std::string suffix) {
  suffix = bare(suffix);
  if (suffix.empty()) return 0;
  if (suffix == "B") return 0;
  const std::size_t power = std::string("KMGTP").find(suffix.front());
  const std::string rest = suffix.substr(1);
  const bool isSuffix = power != std::string::npos && (rest.empty() || rest == "B" || rest == "IB");
  return isSuffix ? static_cast<int>(power) + 1 : -1;
}

/// A size in the unit of the field; a bare number is in that unit already.
std::string sizeOf(const Field& field, const std::string& text) {
  const std::string advice = "say a number, or one with K, M, G, T or P behind it";
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  const std::string suffix = end;
  const int power = powerOf(suffix);
  const bool isNumber = end != text.c_str() && std::isfinite(number) && number >= 0 &&
                        std::isdigit(static_cast<unsigned char>(text.front()));
  if (!isNumber || power < 0) refuse(field, text, advice);
  const double unit = field.unit == "MiB" ? 1024.0 * 1024.0 : 1.0;
  const double amount = suffix.empty() ? number : std::floor(number * std::pow(1024.0, power) / unit);
  if (amount >= 9007199254740992.0 || (suffix.empty() && amount != std::floor(amount)))
    refuse(field, text, advice);
  if (number > 0 && amount == 0) refuse(field, text, "it is less than one " + field.unit);
  return std::to_string(static_cast<std::uint64_t>(amount));
}

json::value numberOf(const Field& field, const std::string& text) {
  boost::system::error_code error;
  const json::value value = json::parse(text, error);
  if (error || !value.is_number()) refuse(field, text, "it is a number");
  return value;
}

bool booleanOf(const Field& field, const std::string& text) {
  const std::string word = bare(text);
  for (const char* yes : {"TRUE", "YES", "ON"}) {
    if (word == yes) return true;
  }
  for (const char* no : {"FALSE", "NO", "OFF"}) {
    if (word == no) return false;
  }
  refuse(field, text, "it is true or false");
}

}  // namespace

std::string optionOf(const std::string& name) {
  std::string option = "--";
  for (const char c : name) {
    const bool isUpper = c >= 'A' && c <= 'Z';
    if (isUpper) option += '-';
    option += isUpper ? static_cast<char>(c - 'A' + 'a') : c == '_' ? '-' : c;
  }
  return option;
}

std::vector<std::string> partsOf(const std::string& list) {
  std::vector<std::string> parts;
  if (!list.empty()) boost::algorithm::split(parts, list, [](char c) { return c == ','; });
  return parts;
}

bool isSize(const Field& field) { return field.unit == "MiB" || field.unit == "bytes"; }

json::value valueOf(const Field& field, const std::string& text) {
  if (field.takesNull && text == "null") return nullptr;
  switch (field.kind) {
    case ValueKind::kText:
      if (!field.words.empty()) return json::value(wordOf(field, text));
      return json::value(isSize(field) ? sizeOf(field, text) : text);
    case ValueKind::kNumber:
      return numberOf(field, isSize(field) ? sizeOf(field, text) : text);
    case ValueKind::kBoolean:
      return booleanOf(field, text);
    case ValueKind::kList: {
      boost::system::error_code error;
      json::value whole = json::parse(text, error);
      if (!error && whole.is_array()) return whole;
      json::array list;
      for (const std::string& part : partsOf(text)) list.emplace_back(part);
      return list;
    }
    case ValueKind::kJson:
      break;
  }
  boost::system::error_code error;
  const json::value value = json::parse(text, error);
  return error ? json::value(text) : value;
}

}  // namespace mirnctl
