#ifndef MIRN_SIMULATOR_MODEL_TABLE_H
#define MIRN_SIMULATOR_MODEL_TABLE_H

#include <iterator>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "model/codes.h"

namespace simulator {

/// Objects by their handle: found in constant time, walked in ascending order, never moved in memory.
///
/// A table can be watched: it then keeps what each object was before somebody got at it who may change it,
/// so that a change can be told and taken back. Whoever only looks goes through a constant table, which
/// costs nothing.
template <class T>
class Table {
  using Ordered = std::map<Handle, T>;

 public:
  /// Objects as they were by their handle; nothing for one that was not there.
  using Originals = std::map<Handle, std::optional<T>>;

  /// Walks objects that may be changed.
  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = typename Ordered::value_type;
    using difference_type = std::ptrdiff_t;
    using pointer = value_type*;
    using reference = value_type&;

    Iterator(Table& table, typename Ordered::iterator at) : m_table(&table), m_at(at) {}
    reference operator*() const {
      m_table->keep(m_at->first, m_at->second);
      return *m_at;
    }
    pointer operator->() const { return &**this; }
    Iterator& operator++() {
      ++m_at;
      return *this;
    }
    Iterator operator++(int) { return {*m_table, m_at++}; }
    bool operator==(const Iterator& other) const { return m_at == other.m_at; }
    bool operator!=(const Iterator& other) const { return m_at != other.m_at; }

   private:
    Table* m_table;
    typename Ordered::iterator m_at;
  };

  Table() = default;
  Table(Table&&) noexcept = default;
  Table& operator=(Table&&) noexcept = default;
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  T& add(Handle handle, T object) {
    T& stored = m_ordered.emplace(handle, std::move(object)).first->second;
    m_byHandle.emplace(handle, &stored);
    if (m_isWatched) m_originals.emplace(handle, std::nullopt);
    return stored;
  }

  void remove(Handle handle) {
    const auto found = m_ordered.find(handle);
    if (found == m_ordered.end()) return;
    keep(handle, found->second);
    m_byHandle.erase(handle);
    m_ordered.erase(found);
  }

  /// The object, or null when the handle names none.
  T* find(Handle handle) {
    const auto found = m_byHandle.find(handle);
    if (found == m_byHandle.end()) return nullptr;
    keep(handle, *found->second);
    return found->second;
  }
  const T* find(Handle handle) const {
    const auto found = m_byHandle.find(handle);
    return found == m_byHandle.end() ? nullptr : found->second;
  }

  /// The object; a handle that names none is refused.
  T& at(Handle handle) { return there(find(handle)); }
  const T& at(Handle handle) const { return there(find(handle)); }

  bool contains(Handle handle) const { return m_byHandle.count(handle) != 0; }
  std::size_t size() const { return m_ordered.size(); }
  Iterator begin() { return {*this, m_ordered.begin()}; }
  Iterator end() { return {*this, m_ordered.end()}; }
  auto begin() const { return m_ordered.begin(); }
  auto end() const { return m_ordered.end(); }

  void watch() {
    m_isWatched = true;
    m_originals.clear();
  }
  void unwatch() {
    m_isWatched = false;
    m_originals.clear();
  }

  /// What was got at since the table is watched.
  const Originals& originals() const { return m_originals; }

  /// Puts back what was there when the watch began, and ends it.
  void undo() {
    Originals originals = std::move(m_originals);
    unwatch();
    for (auto& [handle, original] : originals) {
      T* const present = find(handle);
      if (!original) {
        remove(handle);
      } else if (present != nullptr) {
        *present = std::move(*original);
      } else {
        add(handle, std::move(*original));
      }
    }
  }

 private:
  void keep(Handle handle, const T& object) {
    if (m_isWatched && m_originals.count(handle) == 0) m_originals.emplace(handle, object);
  }

  template <class Object>
  static Object& there(Object* found) {
    require(found != nullptr, VEX_STATUS_INVALID_HANDLE);
    return *found;
  }

  Ordered m_ordered;
  std::unordered_map<Handle, T*> m_byHandle;
  bool m_isWatched = false;
  Originals m_originals;
};

}  // namespace simulator

#endif
