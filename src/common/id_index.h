#ifndef MIRN_COMMON_ID_INDEX_H
#define MIRN_COMMON_ID_INDEX_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// The objects of a list by id, of several with one id the first. One flat list of places, of which at least
/// half are free: an object stands at the place that its id's hash names, or at the next free one behind it.
template <class Object>
class IdIndex {
 public:
  /// `objects` must outlive the index, and stay as they are.
  explicit IdIndex(const std::vector<Object>& objects) : m_places(placesFor(objects.size())) {
    for (const Object& object : objects) {
      const Object*& place = m_places[placeOf(object.id())];
      if (place == nullptr) place = &object;
    }
  }

  /// Null when there is none.
  const Object* find(const std::wstring& id) const { return m_places[placeOf(id)]; }

 private:
  static std::size_t placesFor(std::size_t count) {
    std::size_t places = 2;
    while (places < 2 * count) places *= 2;
    return places;
  }

  /// Where the object with this id stands, or would stand.
  std::size_t placeOf(const std::wstring& id) const {
    std::size_t place = std::hash<std::wstring>()(id) & (m_places.size() - 1);
    while (m_places[place] != nullptr && m_places[place]->id() != id) {
      place = (place + 1) & (m_places.size() - 1);
    }
    return place;
  }

  std::vector<const Object*> m_places;  // a power of two of them; null: free
};

#endif
