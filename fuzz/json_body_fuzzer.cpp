// Any bytes as the body of a request: they are refused with a 400 exactly when they should be, or read as the
// value that Boost.JSON's own tree holds, and writing the value and reading it again changes nothing.
#include <algorithm>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "answers/answer.h"
#include "answers/json_reader.h"
#include "answers/json_writer.h"
#include "property.h"
#include "ServiceObject.h"

namespace {

using ovra::data_transfer::ServiceObject;

constexpr std::size_t kDepth = 8;

std::optional<boost::json::value> tree(std::string_view text) {
  boost::json::parse_options options;
  options.max_depth = kDepth;
  boost::json::error_code error;
  auto value = boost::json::parse(boost::json::string_view(text.data(), text.size()), error, {}, options);
  if (error) return {};
  return value;
}

bool startsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

/// Nothing when it is refused.
std::optional<ServiceObject> read(std::string_view text) {
  try {
    return host::readJson(text, {kDepth, 20000});
  } catch (const host::Refusal& refusal) {
    fuzz::require(refusal.status == 400, "a body is refused with a 400");
    const std::string_view reason = refusal.what();
    if (startsWith(reason, "The body is not valid JSON")) {
      fuzz::require(!tree(text), "what is called malformed is so");
    } else {
      static const std::set<std::string_view> kOthers{
          "The body holds a number that is out of range", "The body holds an object that repeats a key",
          "The body holds a key with a NUL character", "The body holds too many values"};
      fuzz::require(kOthers.count(reason) == 1, "nothing else of a body is refused");
    }
    return {};
  }
}

/// The tree's doubles are not always the nearest ones, nor finite behind a zero with a large exponent.
bool near(double ours, double trees) {
  const double apart = std::abs(ours - trees);
  return !std::isfinite(trees) || apart <= 1e-14 * std::abs(ours) || apart < 1e-300;
}

bool same(const boost::json::value& a, const boost::json::value& b);

bool same(const boost::json::array& a, const boost::json::array& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto& left, const auto& right) { return same(left, right); });
}

bool same(const boost::json::object& a, const boost::json::object& b) {
  return a.size() == b.size() && std::all_of(a.begin(), a.end(), [&b](const auto& member) {
           const boost::json::value* other = b.if_contains(member.key());
           return other != nullptr && same(member.value(), *other);
         });
}

bool same(const boost::json::value& a, const boost::json::value& b) {
  if (a.is_double() && b.is_double()) return near(a.get_double(), b.get_double());
  if (a.is_array() && b.is_array()) return same(a.get_array(), b.get_array());
  if (a.is_object() && b.is_object()) return same(a.get_object(), b.get_object());
  return a == b;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto value = read(text);
  if (!value) return 0;
  const std::string written = host::writeJson(*value);
  const auto meant = text.empty() ? boost::json::value() : tree(text);
  fuzz::require(meant.has_value(), "what is malformed is refused");
  const auto told = tree(written);
  fuzz::require(told.has_value(), "what is written is JSON, and no deeper than what was read");
  fuzz::require(same(*told, *meant), "what is written means what was read");
  const auto again = read(written);
  fuzz::require(again.has_value(), "what is written can be read");
  fuzz::require(host::writeJson(*again) == written, "read again and written, it is the same text");
  return 0;
}
