#ifndef MIRN_COMMON_HASH_INDEX_H
#define MIRN_COMMON_HASH_INDEX_H

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

/// Finds the positions of a list's elements by a hash of what they are found by. It knows no elements:
/// whoever has the list says which hash an element has, and which of those with one hash is meant. One flat
/// list of places; an entry stands at the place that its hash names, or at the next free one behind it.
class HashIndex {
 public:
  using Position = std::uint32_t;
  static constexpr Position kNowhere = UINT32_MAX;

  /// Takes no memory yet.
  HashIndex() = default;
  /// Has room for this many before it grows.
  explicit HashIndex(std::size_t count) { makeRoomFor(count); }

  std::size_t size() const { return m_count; }

  /// Afterwards, up to this many take no more memory. Changes nothing when there is none.
  void makeRoomFor(std::size_t count) {
    // Up to three quarters of the places are taken, so that a free one is never far; half of them when room
    // is made.
    constexpr std::size_t kFewestPlaces = 4;
    if (count * 4 <= m_entries.size() * 3) return;
    std::vector<Entry> fewer(kFewestPlaces + 2 * count);
    std::swap(m_entries, fewer);
    // From a free place on, so that entries of one hash that stand round the end keep their order.
    std::size_t start = 0;
    while (start < fewer.size() && fewer[start].position != kNowhere) ++start;
    for (std::size_t i = 0; i < fewer.size(); ++i) {
      const Entry& entry = fewer[(start + i) % fewer.size()];
      if (entry.position != kNowhere) put(entry);
    }
  }

  /// The position with this hash for which `is(position)` holds, of several the one that was added first;
  /// `kNowhere` when there is none.
  template <class Is>
  Position find(std::size_t hash, Is is) const {
    if (m_entries.empty()) return kNowhere;
    const std::uint32_t kept = keptOf(hash);
    std::size_t place = firstPlaceOf(kept);
    while (m_entries[place].position != kNowhere &&
           !(m_entries[place].hash == kept && is(m_entries[place].position))) {
      place = behind(place);
    }
    return m_entries[place].position;
  }

  /// `position` is below `kNowhere`, and not in the index. Changes nothing when there is no memory.
  void add(std::size_t hash, Position position) {
    makeRoomFor(m_count + 1);
    put({keptOf(hash), position});
    ++m_count;
  }

  /// Tells that two elements have changed places: the first has the one hash, and stood at the one position.
  void exchange(std::size_t hash, Position position, std::size_t otherHash, Position otherPosition) {
    Position& one = m_entries[placeOf(hash, position)].position;
    Position& other = m_entries[placeOf(otherHash, otherPosition)].position;
    std::swap(one, other);
  }

 private:
  struct Entry {
    std::uint32_t hash = 0;
    Position position = kNowhere;
  };

  static std::uint32_t keptOf(std::size_t hash) {
    return static_cast<std::uint32_t>(std::uint64_t{hash} ^ (std::uint64_t{hash} >> 32));
  }

  /// The multiplication spreads hashes that are near each other, as plain numbers are, over 32 bits, and
  /// these over the places.
  std::size_t firstPlaceOf(std::uint32_t hash) const {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;
    const std::uint64_t spread = (hash * kSpread) >> 32;
    return static_cast<std::size_t>((spread * m_entries.size()) >> 32);
  }

  std::size_t behind(std::size_t place) const { return place + 1 == m_entries.size() ? 0 : place + 1; }

  void put(Entry entry) {
    std::size_t place = firstPlaceOf(entry.hash);
    while (m_entries[place].position != kNowhere) place = behind(place);
    m_entries[place] = entry;
  }

  /// The place of an entry that was added.
  std::size_t placeOf(std::size_t hash, Position position) const {
    std::size_t place = firstPlaceOf(keptOf(hash));
    while (m_entries[place].position != position) place = behind(place);
    return place;
  }

  std::vector<Entry> m_entries;
  std::size_t m_count = 0;
};

#endif
