#ifndef MIRN_HOST_INSIGHT_MOVING_LIST_H
#define MIRN_HOST_INSIGHT_MOVING_LIST_H

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "history/list_cursor.h"

namespace host {

template <class Item>
struct MovingPage {
  std::vector<Item> items;
  std::string next;  ///< Empty on the last.
};

/// The first `limit` of `items`, in the order of their `insight::ListPlace`, behind the one that `cursor`
/// names; what comes and goes meanwhile moves no other from one page to another. Raises `insight::BadCursor`.
template <class Item, class PlaceOf>
MovingPage<Item> pageOf(const std::vector<Item>& items, const PlaceOf& placeOf, std::size_t limit,
                        const std::string& cursor) {
  constexpr char kMark = 'p';
  using Placed = std::pair<insight::ListPlace, const Item*>;
  std::vector<Placed> behind;
  std::optional<insight::ListPlace> before;
  if (!cursor.empty()) before = insight::placeAt(kMark, cursor);
  for (const Item& item : items) {
    insight::ListPlace place = placeOf(item);
    if (!before || *before < place) behind.emplace_back(std::move(place), &item);
  }
  const auto end = behind.begin() + static_cast<std::ptrdiff_t>(std::min(limit, behind.size()));
  std::partial_sort(behind.begin(), end, behind.end(),
                    [](const Placed& a, const Placed& b) { return a.first < b.first; });
  MovingPage<Item> page;
  for (auto each = behind.begin(); each != end; ++each) page.items.push_back(*each->second);
  if (end != behind.end() && end != behind.begin())
    page.next = insight::cursorAt(kMark, std::prev(end)->first);
  return page;
}

}  // namespace host

#endif
