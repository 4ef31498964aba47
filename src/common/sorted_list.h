#ifndef MIRN_COMMON_SORTED_LIST_H
#define MIRN_COMMON_SORTED_LIST_H

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

/// Lists in the order of a key, in which an element is found without an index beside them.

/// Sorts by `keyOf(element)`; elements with one key keep their order. A list that is in order already, as
/// most that the library gives, is looked at and left alone; of another one each element is moved once.
template <class Element, class KeyOf>
void sortStablyBy(KeyOf keyOf, std::vector<Element>& list) {
  const auto isBefore = [keyOf](const Element& one, const Element& other) {
    return keyOf(one) < keyOf(other);
  };
  if (std::is_sorted(list.begin(), list.end(), isBefore)) return;
  std::vector<std::pair<decltype(keyOf(list.front())), std::size_t>> places;
  places.reserve(list.size());
  for (const Element& element : list) places.emplace_back(keyOf(element), places.size());
  std::sort(places.begin(), places.end());
  std::vector<Element> sorted;
  sorted.reserve(list.size());
  for (const auto& place : places) sorted.push_back(std::move(list[place.second]));
  list = std::move(sorted);
}

/// The first element with this key of a list that is sorted so; null when there is none.
template <class Element, class KeyOf, class Key>
const Element* findFirstBy(KeyOf keyOf, const std::vector<Element>& sorted, const Key& key) {
  const auto found = std::lower_bound(
      sorted.begin(), sorted.end(), key,
      [keyOf](const Element& element, const Key& sought) { return keyOf(element) < sought; });
  return found == sorted.end() || key < keyOf(*found) ? nullptr : &*found;
}

/// The same for whoever looks for many: what was found last, and what stands behind it, is looked at first,
/// since lists that belong together mostly name each other in order. For one thread at a time.
template <class Element, class KeyOf>
class OrderedSearch {
 public:
  /// `sorted` must outlive the search, and stay as it is.
  OrderedSearch(KeyOf keyOf, const std::vector<Element>& sorted) : m_keyOf(keyOf), m_sorted(sorted) {}

  /// The first element with this key; null when there is none.
  template <class Key>
  const Element* find(const Key& key) const {
    for (const std::size_t place : {m_last, m_last + 1}) {
      if (isFirstOf(key, place)) return at(place);
    }
    const Element* const found = findFirstBy(m_keyOf, m_sorted, key);
    return found == nullptr ? nullptr : at(static_cast<std::size_t>(found - m_sorted.data()));
  }

 private:
  template <class Key>
  bool isFirstOf(const Key& key, std::size_t place) const {
    return place < m_sorted.size() && m_keyOf(m_sorted[place]) == key &&
           (place == 0 || !(m_keyOf(m_sorted[place - 1]) == key));
  }

  const Element* at(std::size_t place) const {
    m_last = place;
    return &m_sorted[place];
  }

  const KeyOf m_keyOf;
  const std::vector<Element>& m_sorted;
  mutable std::size_t m_last = 0;
};

#endif
