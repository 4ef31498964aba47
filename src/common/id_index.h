#ifndef MIRN_COMMON_ID_INDEX_H
#define MIRN_COMMON_ID_INDEX_H

#include <functional>
#include <string>
#include <vector>

#include "hash_index.h"

/// The objects of a list by id, of several with one id the first.
template <class Object>
class IdIndex {
 public:
  /// `objects` must outlive the index, and stay as they are.
  explicit IdIndex(const std::vector<Object>& objects) : m_objects(objects), m_index(objects.size()) {
    for (HashIndex::Position position = 0; position < objects.size(); ++position) {
      m_index.add(std::hash<std::wstring>()(objects[position].id()), position);
    }
  }

  /// Null when there is none.
  const Object* find(const std::wstring& id) const {
    const HashIndex::Position position =
        m_index.find(std::hash<std::wstring>()(id),
                     [&](HashIndex::Position candidate) { return m_objects[candidate].id() == id; });
    return position == HashIndex::kNowhere ? nullptr : &m_objects[position];
  }

 private:
  const std::vector<Object>& m_objects;
  HashIndex m_index;
};

#endif
