#include "text_table.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kFewestPlaces = 16;

/// Up to three quarters of the places are taken, so that a free one is never far.
bool hasRoomFor(std::size_t count, std::size_t places) { return count * 4 <= places * 3; }

}  // namespace

void TextTable::forgetUnused() {
  const auto isUnused = [](const Entry& entry) { return !entry.text.empty() && !entry.text.isShared(); };
  const auto unused = static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(), isUnused));
  if (unused == 0) return;
  TextTable remaining;
  remaining.makeRoomFor(m_count - unused);
  for (Entry& entry : m_entries) {
    if (!entry.text.empty() && !isUnused(entry)) remaining.add(std::move(entry));
  }
  std::swap(*this, remaining);
}

/// The multiplication spreads hashes that are near each other, as plain numbers are.
std::size_t TextTable::firstPlaceOf(std::uint64_t hash) const {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;
  return static_cast<std::size_t>((hash * kSpread) >> 32) & (m_entries.size() - 1);
}

void TextTable::add(Entry entry) {
  makeRoomFor(m_count + 1);
  putIntoFreePlace(std::move(entry));
  ++m_count;
}

void TextTable::putIntoFreePlace(Entry entry) {
  const auto isNoText = [](const std::wstring&) { return false; };
  m_entries[placeOf(entry.hash, isNoText)] = std::move(entry);
}

void TextTable::makeRoomFor(std::size_t count) {
  if (hasRoomFor(count, m_entries.size())) return;
  std::size_t places = std::max(m_entries.size(), kFewestPlaces);
  while (!hasRoomFor(count, places)) places *= 2;
  std::vector<Entry> before = std::exchange(m_entries, std::vector<Entry>(places));
  for (Entry& entry : before) {
    if (!entry.text.empty()) putIntoFreePlace(std::move(entry));
  }
}
