#ifndef MIRN_COMMON_SORTED_LIST_H
#define MIRN_COMMON_SORTED_LIST_H

#include <algorithm>
#include <vector>

/// Lists in the order of a key, in which an element is found without an index beside them.

/// Sorts by `keyOf(element)`; elements with one key keep their order. A list that is in order already, as
/// most that the library gives, is looked at and left alone.
template <class Element, class KeyOf>
void sortStablyBy(KeyOf keyOf, std::vector<Element>& list) {
  const auto isBefore = [keyOf](const Element& one, const Element& other) {
    return keyOf(one) < keyOf(other);
  };
  if (std::is_sorted(list.begin(), list.end(), isBefore)) return;
  std::stable_sort(list.begin(), list.end(), isBefore);
}

/// The first element with this key of a list that is sorted so; null when there is none.
template <class Element, class KeyOf, class Key>
const Element* findFirstBy(KeyOf keyOf, const std::vector<Element>& sorted, const Key& key) {
  const auto found = std::lower_bound(
      sorted.begin(), sorted.end(), key,
      [keyOf](const Element& element, const Key& sought) { return keyOf(element) < sought; });
  return found == sorted.end() || key < keyOf(*found) ? nullptr : &*found;
}

#endif
