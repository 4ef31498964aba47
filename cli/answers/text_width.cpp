#include "answers/text_width.h"

#include <algorithm>

namespace mirnctl {

namespace {

constexpr std::string_view kCut = "…";

bool beginsCharacter(char unit) { return (static_cast<unsigned char>(unit) & 0xC0u) != 0x80u; }

}  // namespace

std::size_t widthOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

std::string shortened(std::string_view text, std::size_t width) {
  if (widthOf(text) <= width) return std::string(text);
  if (width == 0) return {};
  std::size_t end = 0;
  for (std::size_t characters = 0; end < text.size(); ++end) {
    if (beginsCharacter(text[end]) && ++characters == width) break;
  }
  return std::string(text.substr(0, end)) + std::string(kCut);
}

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
  if (width == 0) return {std::string(text)};
  const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
  std::vector<std::string> lines{std::string(begin, ' ')};
  text.remove_prefix(begin);
  for (bool isFirst = true; !text.empty(); isFirst = false) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string word(text.substr(0, end));
    std::string& line = lines.back();
    if (isFirst) {
      line += word;
    } else if (widthOf(line) + 1 + widthOf(word) <= width) {
      line += ' ' + word;
    } else {
      lines.push_back(word);
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string hanging(std::string_view text, std::size_t indent, std::size_t width) {
  std::string lines;
  for (const std::string& line : wrapped(text, width > 2 * indent ? width - indent : 0)) {
    if (!lines.empty()) lines += std::string(indent, ' ');
    lines += line + '\n';
  }
  return lines;
}

std::string printable(std::string_view text) {
  std::string clean(text);
  for (std::size_t place = 0; place < clean.size(); ++place) {
    const auto unit = static_cast<unsigned char>(clean[place]);
    if (unit < 0x20 || unit == 0x7f) clean[place] = '?';
    // The second control characters, of two bytes.
    const bool isSecond =
        unit == 0xC2 && place + 1 < clean.size() && static_cast<unsigned char>(clean[place + 1]) < 0xA0;
    if (isSecond) clean.replace(place, 2, "?");
  }
  return clean;
}

}  // namespace mirnctl
