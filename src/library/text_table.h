#ifndef MIRN_LIBRARY_TEXT_TABLE_H
#define MIRN_LIBRARY_TEXT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "shared_text.h"

/// Texts that are found by a hash of what they are made from, each held once. A text stands at the place that
/// its hash names, or at the next free one behind it, round the end; the hashes stand by themselves, close
/// together, since most of a search looks at them alone.
template <class Hash>
class TextTable {
 public:
  /// The text with this hash for which `is(text)` holds, a `std::wstring`; an empty one where there is none.
  template <class Is>
  SharedText find(Hash hash, Is is) const {
    return m_texts.empty() ? SharedText() : m_texts[placeOf(hash, is)];
  }

  /// Holds a text that was not found, unless it is empty, and gives it back.
  SharedText add(Hash hash, SharedText text) {
    if (text.empty()) return text;
    makeRoomFor(m_count + 1);
    put(hash, text);
    ++m_count;
    return text;
  }

  /// Lets go of the texts that nobody else holds.
  void forgetUnused() {
    std::size_t used = 0;
    for (const SharedText& text : m_texts) used += text.isShared() ? 1 : 0;
    if (used == m_count) return;
    TextTable remaining;
    remaining.makeRoomFor(used);
    for (std::size_t i = 0; i < m_texts.size(); ++i) {
      if (m_texts[i].isShared()) remaining.add(m_hashes[i], std::move(m_texts[i]));
    }
    std::swap(*this, remaining);
  }

  std::size_t size() const { return m_count; }

 private:
  /// Where the text stands, or would stand.
  template <class Is>
  std::size_t placeOf(Hash hash, Is is) const {
    std::size_t place = firstPlaceOf(hash);
    while (!m_texts[place].empty() && !(m_hashes[place] == hash && is(m_texts[place].text()))) {
      place = place + 1 == m_texts.size() ? 0 : place + 1;
    }
    return place;
  }

  /// The multiplication spreads hashes that are near each other, as plain numbers are, over 32 bits, and
  /// these over the places.
  std::size_t firstPlaceOf(Hash hash) const {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;
    const std::uint64_t spread = (std::uint64_t{hash} * kSpread) >> 32;
    return static_cast<std::size_t>((spread * m_texts.size()) >> 32);
  }

  void put(Hash hash, SharedText text) {
    const std::size_t place = placeOf(hash, [](const std::wstring&) { return false; });
    m_hashes[place] = hash;
    m_texts[place] = std::move(text);
  }

  /// Up to seven eighths of the places are taken, so that a free one is never far.
  void makeRoomFor(std::size_t count) {
    constexpr std::size_t kFewestPlaces = 16;
    if (count * 8 <= m_texts.size() * 7) return;
    TextTable larger;
    larger.m_hashes.resize(kFewestPlaces + count + count / 3);
    larger.m_texts.resize(larger.m_hashes.size());
    for (std::size_t i = 0; i < m_texts.size(); ++i) {
      if (!m_texts[i].empty()) larger.put(m_hashes[i], std::move(m_texts[i]));
    }
    larger.m_count = m_count;
    std::swap(*this, larger);
  }

  std::vector<Hash> m_hashes;
  std::vector<SharedText> m_texts;  // as many; empty: the place is free
  std::size_t m_count = 0;
};

#endif
