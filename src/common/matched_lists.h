#ifndef MIRN_COMMON_MATCHED_LISTS_H
#define MIRN_COMMON_MATCHED_LISTS_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "hash_index.h"

/// Which objects of an old and a new list are the same one, by id. Where an id stands twice in the old list,
/// its first object counts; in the new one each is matched for itself.
///
/// Most often little has changed, and the old object is the one behind the last that was found: that one is
/// looked at first, and only where it is another an id of the new list is hashed.
template <class Object>
class MatchedLists {
 public:
  /// Both lists must outlive this, and stay as they are.
  MatchedLists(const std::vector<Object>& before, const std::vector<Object>& after)
      : m_before(before), m_index(before.size()), m_stays(before.size(), false) {
    enterOldIds();
    m_matches.reserve(after.size());
    for (const Object& object : after) match(object);
  }

  /// The old object that has the id of the new one at this place; null when there is none.
  const Object* before(std::size_t newPlace) const {
    const Position old = m_matches[newPlace];
    return old == HashIndex::kNowhere ? nullptr : &m_before[old];
  }

  /// Whether no new object has the id of the old one at this place.
  bool isGone(std::size_t oldPlace) const {
    return !m_stays[m_eachIdOnce ? oldPlace : firstOf(m_before[oldPlace].id())];
  }

 private:
  using Position = HashIndex::Position;

  static std::size_t hashOf(const std::wstring& id) { return std::hash<std::wstring>()(id); }

  void enterOldIds() {
    for (Position place = 0; place < m_before.size(); ++place) {
      const std::size_t hash = hashOf(m_before[place].id());
      if (find(m_before[place].id(), hash) == HashIndex::kNowhere) {
        m_index.add(hash, place);
      } else {
        m_eachIdOnce = false;
      }
    }
  }

  void match(const Object& object) {
    const Position old = isExpected(object) ? m_expected : firstOf(object.id());
    m_matches.push_back(old);
    if (old == HashIndex::kNowhere) return;
    m_stays[old] = true;
    m_expected = old + 1;
  }

  /// Only where each id stands once is it certain that no other object comes first.
  bool isExpected(const Object& object) const {
    return m_eachIdOnce && m_expected < m_before.size() && isSame(m_before[m_expected].id(), object.id());
  }

  Position firstOf(const std::wstring& id) const { return find(id, hashOf(id)); }

  Position find(const std::wstring& id, std::size_t hash) const {
    return m_index.find(hash, [&](Position candidate) { return isSame(m_before[candidate].id(), id); });
  }

  /// Two pictures share the texts that did not change.
  static bool isSame(const std::wstring& one, const std::wstring& other) {
    return &one == &other || one == other;
  }

  const std::vector<Object>& m_before;
  HashIndex m_index;  ///< Of the old list: the first object of each id.
  std::vector<bool> m_stays;
  std::vector<Position> m_matches;
  Position m_expected = 0;
  bool m_eachIdOnce = true;
};

#endif
