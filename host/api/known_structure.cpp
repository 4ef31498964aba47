#include "api/known_structure.h"

#include <charconv>
#include <string_view>

#include "answers/answer.h"
#include "answers/field_list.h"
#include "text.h"

namespace host {

namespace {

constexpr std::size_t kEpochDigits = 16;

[[noreturn]] void refuse() {
  throw Refusal(400, R"(If-Match of a change is not what Mirn-Structure told: "EPOCH.N")");
}

std::uint64_t numberIn(std::string_view digits) {
  std::uint64_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, number);
  if (digits.empty() || result.ec != std::errc() || result.ptr != end) refuse();
  return number;
}

}  // namespace

KnownStructure knownStructureIn(const std::string& field) {
  std::string_view text = trimmed(field);
  if (text.size() < kEpochDigits + 4 || text.front() != '"' || text.back() != '"') refuse();
  text = text.substr(1, text.size() - 2);
  const std::string_view epoch = text.substr(0, kEpochDigits);
  if (epoch.find_first_not_of("0123456789abcdef") != std::string_view::npos) refuse();
  if (text[kEpochDigits] != '.') refuse();
  return {utf8ToWide(std::string(epoch)), numberIn(text.substr(kEpochDigits + 1))};
}

std::string structureField(const ovra::PluginPosition& position) {
  return '"' + wideToUtf8(position.epoch) + '.' + std::to_string(position.structure) + '"';
}

}  // namespace host
