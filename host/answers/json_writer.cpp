#include "answers/json_writer.h"

#include <algorithm>
#include <array>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <utility>

#include "text.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr bool isAscii(wchar_t unit) { return static_cast<std::uint32_t>(unit) < 0x80U; }

/// Writes straight into the text: a second tree of the values would take several times what the text takes.
class JsonText {
 public:
  void put(const ServiceObject& object);

  std::string take() { return std::move(m_text); }

 private:
  template <class Number>
  void putNumber(Number number);
  void putReal(double real);
  void putText(const std::wstring& text);
  template <class Text>
  void putQuoted(const Text& text);
  void putEscape(unsigned char character);
  void putObject(const ServiceObject& object);
  void putArray(const ServiceObject& object);

  std::string m_text;
};

/// By the index of the alternative.
void JsonText::put(const ServiceObject& object) {
  switch (object.which()) {
    case 1:
      m_text += object.toBool() ? "true" : "false";
      return;
    case 2:
      return putNumber(object.toInt64());
    case 3:
      return putNumber(static_cast<std::uint64_t>(object.toInt64()));  // the conversion keeps all bits
    case 4:
      return putReal(object.asReal());
    case 5:
      return putText(object.toString());
    case 6:
      return putObject(object);
    case 7:
      return putArray(object);
    default:
      m_text += "null";
  }
}

template <class Number>
void JsonText::putNumber(Number number) {
  std::array<char, 20> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
  m_text.append(digits.data(), end);
}

void JsonText::putReal(double real) {
  m_text += std::isfinite(real) ? boost::json::serialize(boost::json::value(real)) : "null";
}

/// Without a text between where there need not be one, which takes a fifth off what a list takes.
void JsonText::putText(const std::wstring& text) {
  if (std::all_of(text.begin(), text.end(), isAscii)) return putQuoted(text);
  putQuoted(wideToUtf8(text));
}

template <class Text>
void JsonText::putQuoted(const Text& text) {
  m_text += '"';
  for (const auto unit : text) {
    const auto character = static_cast<unsigned char>(unit);
    if (character < 0x20 || character == '"' || character == '\\') {
      putEscape(character);
    } else {
      m_text += static_cast<char>(character);
    }
  }
  m_text += '"';
}

void JsonText::putEscape(unsigned char character) {
  constexpr std::string_view kShort = "\"\\\b\f\n\r\t";
  constexpr std::string_view kLetters = "\"\\bfnrt";
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::size_t place = kShort.find(static_cast<char>(character));
  m_text += '\\';
  if (place != std::string_view::npos) {
    m_text += kLetters[place];
    return;
  }
  m_text += "u00";
  m_text += kDigits[character / kDigits.size()];
  m_text += kDigits[character % kDigits.size()];
}

void JsonText::putObject(const ServiceObject& object) {
  const char* separator = "{";
  for (const auto& member : object.asObject()) {
    m_text += separator;
    putText(member.first);
    m_text += ':';
    put(*member.second);
    separator = ",";
  }
  m_text += *separator == '{' ? "{}" : "}";
}

void JsonText::putArray(const ServiceObject& object) {
  const char* separator = "[";
  for (const auto& child : object) {
    m_text += separator;
    put(*child.value);
    separator = ",";
  }
  m_text += *separator == '[' ? "[]" : "]";
}

}  // namespace

std::string writeJson(const ServiceObject& object) {
  JsonText text;
  text.put(object);
  return text.take();
}

}  // namespace host
