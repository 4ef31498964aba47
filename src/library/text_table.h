#ifndef MIRN_LIBRARY_TEXT_TABLE_H
#define MIRN_LIBRARY_TEXT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "shared_text.h"

/// Texts that are found by a hash of what they are made from, each held once. One flat list: a text stands at
/// the place that its hash names, or at the next free one behind it.
class TextTable {
 public:
  /// The text with this hash for which `is(text)` holds, a `std::wstring`; an empty one where there is none.
  template <class Is>
  SharedText find(std::uint64_t hash, Is is) const {
    return m_entries.empty() ? SharedText() : m_entries[placeOf(hash, is)].text;
  }

  /// Holds a text that was not found, unless it is empty, and gives it back.
  SharedText add(std::uint64_t hash, SharedText text);

  /// Lets go of the texts that nobody else holds.
  void forgetUnused();

  std::size_t size() const { return m_count; }

 private:
  struct Entry {
    std::uint64_t hash = 0;
    SharedText text;  // empty: the place is free
  };

  /// Where the text stands, or would stand.
  template <class Is>
  std::size_t placeOf(std::uint64_t hash, Is is) const {
    std::size_t place = firstPlaceOf(hash);
    while (!m_entries[place].text.empty() &&
           !(m_entries[place].hash == hash && is(m_entries[place].text.text()))) {
      place = (place + 1) & (m_entries.size() - 1);
    }
    return place;
  }

  /// The multiplication spreads hashes that are near each other, as plain numbers are.
  std::size_t firstPlaceOf(std::uint64_t hash) const {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>((hash * kSpread) >> 32) & (m_entries.size() - 1);
  }

  void put(Entry entry);
  void makeRoomFor(std::size_t count);

  std::vector<Entry> m_entries;  // a power of two of them, or none; some are free always
  std::size_t m_count = 0;
};

#endif
