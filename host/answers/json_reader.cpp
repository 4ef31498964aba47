#include "answers/json_reader.h"

#include <boost/json/basic_parser_impl.hpp>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "answers/answer.h"
#include "text.h"

namespace host {

namespace {

using boost::json::error_code;
using boost::json::string_view;
using ovra::data_transfer::ServiceObject;

constexpr std::int32_t kBadRequest = 400;

// The names below are the parser's.
// NOLINTBEGIN(readability-identifier-naming)

/// Builds the value while the parser walks the text.
class ServiceObjectBuilder {
 public:
  // The body's size is bounded long before these could be.
  static constexpr std::size_t max_object_size = std::numeric_limits<std::size_t>::max();
  static constexpr std::size_t max_array_size = std::numeric_limits<std::size_t>::max();
  static constexpr std::size_t max_key_size = std::numeric_limits<std::size_t>::max();
  static constexpr std::size_t max_string_size = std::numeric_limits<std::size_t>::max();

  explicit ServiceObjectBuilder(std::size_t maxValues) : m_valuesLeft(maxValues) {}

  bool on_document_begin(error_code&) { return open(ServiceObject()); }
  bool on_document_end(error_code&) { return true; }
  bool on_object_begin(error_code&) { return open(ServiceObject::object()); }
  bool on_object_end(std::size_t, error_code&) { return add(close().container); }
  bool on_array_begin(error_code&) { return open(ServiceObject::array()); }
  bool on_array_end(std::size_t, error_code&) { return add(arrayOf(close().elements)); }
  bool on_key_part(string_view part, std::size_t, error_code&) { return append(part); }
  bool on_key(string_view part, std::size_t, error_code&) {
    m_open.back().key = takeText(part);
    if (m_open.back().key.find(L'\0') == std::wstring::npos) return true;
    throw Refusal(kBadRequest,
                  "The body holds a key with a NUL character");  // which would end a failure's text
  }
  bool on_string_part(string_view part, std::size_t, error_code&) { return append(part); }
  bool on_string(string_view part, std::size_t, error_code&) { return add(ServiceObject(takeText(part))); }
  bool on_number_part(string_view part, error_code&) { return append(part); }
  bool on_int64(std::int64_t value, string_view part, error_code&) { return add(integer(value, part)); }
  bool on_uint64(std::uint64_t value, string_view, error_code&) { return add(unsignedInteger(value)); }
  bool on_double(double, string_view part, error_code&) { return add(real(part)); }
  bool on_bool(bool value, error_code&) { return add(ServiceObject(value)); }
  bool on_null(error_code&) { return add(ServiceObject()); }
  bool on_comment_part(string_view, error_code&) { return true; }
  bool on_comment(string_view, error_code&) { return true; }

  ServiceObject take() { return std::move(m_open.front().elements.front()); }

 private:
  /// A container whose end is not read yet. The elements of an array are put into place at its
  /// end, all at once.
  struct Open {
    ServiceObject container;
    std::vector<ServiceObject> elements;
    std::wstring key;
  };

  static ServiceObject unsignedInteger(std::uint64_t value) {
    ServiceObject object;
    object = value;
    return object;
  }

  ServiceObject integer(std::int64_t value, string_view part) {
    append(part);
    const bool isSigned =
        std::exchange(m_text, {}).front() == '-';  // "-0" too, which the value does not show
    if (!isSigned) return unsignedInteger(static_cast<std::uint64_t>(value));
    ServiceObject object;
    object = value;
    return object;
  }

  /// From the text, since the parser's own value is not always the nearest one.
  ServiceObject real(string_view part) {
    append(part);
    const std::string text = std::exchange(m_text, {});
    double value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) {
      throw Refusal(kBadRequest, "The body holds a number that is out of range");
    }
    return ServiceObject::real(value);
  }

  static ServiceObject arrayOf(std::vector<ServiceObject> elements) {
    ServiceObject array = ServiceObject::array();
    if (!elements.empty()) array.at(elements.size() - 1);
    for (std::size_t i = 0; i < elements.size(); ++i) array.at(i).swap(elements[i]);
    return array;
  }

  bool open(ServiceObject container) {
    m_open.push_back({std::move(container), {}, {}});
    return true;
  }

  Open close() {
    Open closed = std::move(m_open.back());
    m_open.pop_back();
    return closed;
  }

  bool add(ServiceObject value) {
    if (m_valuesLeft-- == 0) throw Refusal(kBadRequest, "The body holds too many values");
    Open& parent = m_open.back();
    if (!parent.container.isObject()) {
      parent.elements.push_back(std::move(value));
      return true;
    }
    if (parent.container.hasKey(parent.key))
      throw Refusal(kBadRequest, "The body holds an object that repeats a key");
    parent.container.member(parent.key).swap(value);
    return true;
  }

  bool append(string_view part) {
    m_text.append(part.data(), part.size());
    return true;
  }

  std::wstring takeText(string_view part) {
    append(part);
    return utf8ToWide(std::exchange(m_text, {}));
  }

  std::vector<Open> m_open;
  std::string m_text;
  std::size_t m_valuesLeft;
};

// NOLINTEND(readability-identifier-naming)

}  // namespace

ServiceObject readJson(std::string_view text, const JsonBounds& bounds) {
  if (text.empty()) return {};
  boost::json::parse_options options;
  options.max_depth = bounds.depth;
  boost::json::basic_parser<ServiceObjectBuilder> parser(options, bounds.values);
  error_code error;
  const std::size_t end = parser.write_some(false, text.data(), text.size(), error);
  if (!error && end != text.size()) error = boost::json::error::extra_data;
  if (error) {
    throw Refusal(kBadRequest,
                  "The body is not valid JSON: " + error.message() + " at offset " + std::to_string(end));
  }
  return parser.handler().take();
}

}  // namespace host
