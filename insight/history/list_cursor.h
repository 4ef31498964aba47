#ifndef MIRN_INSIGHT_HISTORY_LIST_CURSOR_H
#define MIRN_INSIGHT_HISTORY_LIST_CURSOR_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <tuple>

namespace insight {

/// Raised for a cursor that no page has given.
class BadCursor : public std::invalid_argument {
 public:
  BadCursor() : std::invalid_argument("The cursor is none that a page has given.") {}
};

/// Where something stands in a list that is told in pages, whatever comes to it or goes meanwhile: by two
/// numbers, none of them negative, and its id.
struct ListPlace {
  std::int64_t first = 0;
  std::int64_t second = 0;
  std::string id;

  friend bool operator<(const ListPlace& a, const ListPlace& b) {
    return std::tie(a.first, a.second, a.id) < std::tie(b.first, b.second, b.id);
  }
};

/// For clients; `mark` tells lists apart.
std::string cursorAt(char mark, const ListPlace& place);
/// The reverse. Raises `BadCursor`.
ListPlace placeAt(char mark, const std::string& cursor);

}  // namespace insight

#endif
