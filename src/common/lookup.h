#ifndef MIRN_COMMON_LOOKUP_H
#define MIRN_COMMON_LOOKUP_H

#include <boost/bimap.hpp>
#include <initializer_list>
#include <map>
#include <stdexcept>
#include <type_traits>

/// Look-ups in tables. A table is an initialiser list, one row a value, and never changes once built; so all
/// of this is safe from any thread.

/// What `key` stands for; a missing one raises `std::out_of_range` with "invalid map<K, T> key".
template <class Key, class Value>
const Value& lookUp(const std::map<Key, Value>& table, const Key& key) {
  const auto found = table.find(key);
  if (found == table.end()) throw std::out_of_range("invalid map<K, T> key");
  return found->second;
}

/// The same for one side of a bimap, which raises `std::out_of_range` with "bimap<>: invalid key".
template <class BimapSide, class Key>
const auto& lookUp(const BimapSide& side, const Key& key) {
  return side.at(key);
}

/// What `key` stands for, or `fallback` where the table has no such key. A miss is ordinary, and raises
/// nothing on its way.
template <class Table, class Key, class Fallback>
auto lookUpOr(const Table& table, const Key& key, const Fallback& fallback)
    -> std::decay_t<decltype(lookUp(table, key))> {
  const auto found = table.find(key);
  if (found == table.end()) return fallback;
  return found->second;
}

/// A table that is read in both directions.
template <class Left, class Right>
using TwoWayTable = boost::bimap<Left, Right>;

/// Builds a two-way table from its rows, since a bimap takes no initialiser list of its own.
template <class Left, class Right>
TwoWayTable<Left, Right> makeTwoWayTable(
    std::initializer_list<typename TwoWayTable<Left, Right>::value_type> rows) {
  return TwoWayTable<Left, Right>(rows.begin(), rows.end());
}

#endif
