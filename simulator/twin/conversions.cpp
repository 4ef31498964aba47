#include "twin/conversions.h"

#include <charconv>

#include "twin/twin_error.h"

namespace simulator {
namespace {

constexpr std::string_view kHexPrefix = "0x";

[[noreturn]] void fail(const std::string& path, const std::string& words) {
  throw TwinError(path + ": " + words);
}

std::uint64_t parsed(std::string_view text, int base, const std::string& path, const char* words) {
  std::uint64_t number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) fail(path, words);
  return number;
}

/// What the plug-in says where it has no word for a code, or the code makes no sense there.
bool isNoWord(std::string_view word) {
  return word.empty() || word == "UNKNOWN" || word == "N/A" || word == "SIZE_UNKNOWN" ||
         word == "NOT_SUPPORTED";
}

}  // namespace

const boost::json::object& objectAt(const boost::json::value& value, const std::string& path) {
  if (!value.is_object()) fail(path, "not an object");
  return value.get_object();
}

const boost::json::array& arrayAt(const boost::json::value& value, const std::string& path) {
  if (!value.is_array()) fail(path, "not a list");
  return value.get_array();
}

std::string textAt(const boost::json::value& value, const std::string& path) {
  if (!value.is_string()) fail(path, "not a text");
  return std::string(value.get_string());
}

std::uint64_t numberAt(const boost::json::value& value, const std::string& path) {
  if (value.is_uint64()) return value.get_uint64();
  if (!value.is_int64() || value.get_int64() < 0) fail(path, "not a whole number");
  return static_cast<std::uint64_t>(value.get_int64());
}

std::uint64_t sizeAt(const boost::json::value& value, const std::string& path) {
  return parsed(textAt(value, path), 10, path, "not a size");
}

const boost::json::value* memberOf(const boost::json::object& object, std::string_view path) {
  const std::size_t dot = path.find('.');
  const boost::json::value* const found = object.if_contains(path.substr(0, dot));
  if (dot == std::string_view::npos || found == nullptr) return found;
  return found->is_object() ? memberOf(found->get_object(), path.substr(dot + 1)) : nullptr;
}

const boost::json::value& neededMemberOf(const boost::json::object& object, std::string_view path,
                                         const std::string& place) {
  const boost::json::value* const found = memberOf(object, path);
  if (found == nullptr) fail(place + "." + std::string(path), "missing");
  return *found;
}

namespace conversions {

Converted text(const boost::json::value& published, const std::string& path) {
  return boost::json::value(textAt(published, path));
}

Converted flag(const boost::json::value& published, const std::string& path) {
  if (!published.is_bool()) fail(path, "not true or false");
  return published;
}

Converted number(const boost::json::value& published, const std::string& path) {
  return numberAt(published, path);
}

Converted size(const boost::json::value& published, const std::string& path) {
  return sizeAt(published, path);
}

Converted hexadecimal(const boost::json::value& published, const std::string& path) {
  const std::string text = textAt(published, path);
  if (text.compare(0, kHexPrefix.size(), kHexPrefix) != 0) fail(path, "not a hexadecimal number");
  return parsed(std::string_view(text).substr(kHexPrefix.size()), 16, path, "not a hexadecimal number");
}

Converted address(const boost::json::value& published, const std::string& path) {
  const std::string text = textAt(published, path);
  boost::json::array bytes;
  for (std::string_view rest = text;;) {
    const std::size_t end = rest.find('-');
    bytes.emplace_back(static_cast<std::int64_t>(parsed(rest.substr(0, end), 10, path, "not an address")));
    if (end == std::string_view::npos) return bytes;
    rest.remove_prefix(end + 1);
  }
}

Converted word(const boost::json::value& published, const std::string& path) {
  const std::string text = textAt(published, path);
  if (isNoWord(text)) return {};
  return boost::json::value(text);
}

Converted reference(const boost::json::value& published, const std::string& path) {
  if (published.is_null()) return {};
  const std::string id = textAt(published, path);
  if (id.empty()) return {};
  return boost::json::value(id);
}

Converted vendor(const boost::json::value& published, const std::string& path) {
  const std::string text = textAt(published, path);
  if (text.compare(0, kHexPrefix.size(), kHexPrefix) != 0) return boost::json::value(text);
  const std::string rest = text.substr(kHexPrefix.size());
  // One with the prefix further behind would not get it in front again.
  return boost::json::value(rest.find(kHexPrefix) == std::string::npos ? rest : text);
}

Converted phys(const boost::json::value& published, const std::string& path) {
  boost::json::object phy;
  if (const Converted speed = word(published, path)) phy["linkSpeed"] = *speed;
  return boost::json::array{phy};
}

}  // namespace conversions
}  // namespace simulator
