#include "history/list_cursor.h"

#include <algorithm>

namespace insight {

namespace {

constexpr std::size_t kMostDigits = 18;

std::int64_t numberOf(const std::string& text) {
  const bool isNumber = !text.empty() && text.size() <= kMostDigits &&
                        std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (!isNumber) throw BadCursor();
  return std::stoll(text);
}

}  // namespace

std::string cursorAt(char mark, const ListPlace& place) {
  return mark + std::to_string(place.first) + '.' + std::to_string(place.second) + '.' + place.id;
}

/// An id may have points of its own.
ListPlace placeAt(char mark, const std::string& cursor) {
  const std::size_t first = cursor.find('.');
  const std::size_t second = first == std::string::npos ? first : cursor.find('.', first + 1);
  if (second == std::string::npos || cursor.front() != mark) throw BadCursor();
  return {numberOf(cursor.substr(1, first - 1)), numberOf(cursor.substr(first + 1, second - first - 1)),
          cursor.substr(second + 1)};
}

}  // namespace insight
