#include "answers/field_list.h"

#include <cstddef>

namespace host {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

std::vector<std::string_view> partsOf(std::string_view value, char separator) {
  std::vector<std::string_view> parts;
  bool isQuoted = false;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= value.size(); ++i) {
    if (i < value.size() && value[i] == '"') isQuoted = !isQuoted;
    if (i < value.size() && (value[i] != separator || isQuoted)) continue;
    const std::string_view part = trimmed(value.substr(begin, i - begin));
    if (!part.empty()) parts.push_back(part);
    begin = i + 1;
  }
  return parts;
}

}  // namespace host
