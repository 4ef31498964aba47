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
  /// The text with this hash for which `is(text)` holds, a `std::wstring`; what `make()` gives where there is
  /// none. An empty one is not held.
  template <class Is, class Make>
  SharedText findOrMake(std::uint64_t hash, Is is, Make make) {
    const std::size_t place = placeOf(hash, is);
    if (place < m_entries.size() && !m_entries[place].text.empty()) return m_entries[place].text;
    SharedText text = make();
    if (!text.empty()) add({hash, text});
    return text;
  }

  /// Lets go of the texts that nobody else holds.
  void forgetUnused();

  std::size_t size() const { return m_count; }

 private:
  struct Entry {
    std::uint64_t hash = 0;
    SharedText text;  // empty: the place is free
  };

  /// Where the text stands, or would stand. Behind the end while the list has no place at all.
  template <class Is>
  std::size_t placeOf(std::uint64_t hash, Is is) const {
    if (m_entries.empty()) return 0;
    std::size_t place = firstPlaceOf(hash);
    while (!m_entries[place].text.empty() &&
           !(m_entries[place].hash == hash && is(m_entries[place].text.text()))) {
      place = (place + 1) & (m_entries.size() - 1);
    }
    return place;
  }

  std::size_t firstPlaceOf(std::uint64_t hash) const;
  void add(Entry entry);
  void putIntoFreePlace(Entry entry);
  void makeRoomFor(std::size_t count);

  std::vector<Entry> m_entries;  // a power of two of them, or none; some are free always
  std::size_t m_count = 0;
};

#endif
