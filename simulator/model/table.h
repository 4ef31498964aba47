#ifndef MIRN_SIMULATOR_MODEL_TABLE_H
#define MIRN_SIMULATOR_MODEL_TABLE_H

#include <map>
#include <unordered_map>
#include <utility>

#include "model/codes.h"

namespace simulator {

/// Objects by their handle: found in constant time, walked in ascending order, never moved in memory.
template <class T>
class Table {
 public:
  Table() = default;
  Table(Table&&) noexcept = default;
  Table& operator=(Table&&) noexcept = default;
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  T& add(Handle handle, T object) {
    T& stored = m_ordered.emplace(handle, std::move(object)).first->second;
    m_byHandle.emplace(handle, &stored);
    return stored;
  }

  void remove(Handle handle) {
    m_byHandle.erase(handle);
    m_ordered.erase(handle);
  }

  /// The object, or null when the handle names none.
  T* find(Handle handle) {
    const auto found = m_byHandle.find(handle);
    return found == m_byHandle.end() ? nullptr : found->second;
  }
  const T* find(Handle handle) const { return const_cast<Table*>(this)->find(handle); }

  /// The object; a handle that names none is refused.
  T& at(Handle handle) {
    T* const found = find(handle);
    require(found != nullptr, VEX_STATUS_INVALID_HANDLE);
    return *found;
  }
  const T& at(Handle handle) const { return const_cast<Table*>(this)->at(handle); }

  bool contains(Handle handle) const { return find(handle) != nullptr; }
  std::size_t size() const { return m_ordered.size(); }
  auto begin() { return m_ordered.begin(); }
  auto end() { return m_ordered.end(); }
  auto begin() const { return m_ordered.begin(); }
  auto end() const { return m_ordered.end(); }

 private:
  std::map<Handle, T> m_ordered;
  std::unordered_map<Handle, T*> m_byHandle;
};

}  // namespace simulator

#endif
