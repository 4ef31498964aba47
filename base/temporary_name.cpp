#include "temporary_name.h"

#include <algorithm>
#include <array>
#include <boost/algorithm/hex.hpp>
#include <iterator>
#include <string>

#include "random_bytes.h"

namespace {

using Text = std::filesystem::path::string_type;

constexpr char kDigits[] = "0123456789abcdef";
constexpr std::size_t kRandomBytes = 8;
constexpr std::size_t kDigitCount = 2 * kRandomBytes;
constexpr char kEnd[] = ".new";

bool isDigit(Text::value_type character) {
  return std::any_of(kDigits, kDigits + 16, [&](char digit) { return character == digit; });
}

}  // namespace

std::filesystem::path temporaryNameFor(const std::filesystem::path& target) {
  std::array<unsigned char, kRandomBytes> bytes{};
  fillWithRandomBytes(bytes.data(), bytes.size());
  std::string digits;
  boost::algorithm::hex_lower(bytes.begin(), bytes.end(), std::back_inserter(digits));
  auto result = target;
  result += "." + digits + kEnd;
  return result;
}

bool isTemporaryName(const std::filesystem::path& name, const std::filesystem::path& target) {
  const Text& text = name.native();
  const Text begin = target.native() + Text(1, '.');
  const Text end = std::filesystem::path(kEnd).native();
  if (text.size() != begin.size() + kDigitCount + end.size()) return false;
  const auto digits = text.begin() + static_cast<std::ptrdiff_t>(begin.size());
  return std::equal(begin.begin(), begin.end(), text.begin()) &&
         std::all_of(digits, digits + kDigitCount, isDigit) &&
         std::equal(end.begin(), end.end(), digits + kDigitCount);
}
