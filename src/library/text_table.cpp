#include "text_table.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kFewestPlaces = 16;

/// Up to three quarters of the places are taken, so that a free one is never far.
bool hasRoomFor(std::size_t count, std::size_t places) { return count * 4 <= places * 3; }

}  // namespace

SharedText TextTable::add(std::uint64_t hash, SharedText text) {
  if (text.empty()) return text;
  makeRoomFor(m_count + 1);
  put({hash, text});
  ++m_count;
  return text;
}

void TextTable::forgetUnused() {
  const auto isUnused = [](const Entry& entry) { return !entry.text.empty() && !entry.text.isShared(); };
  const auto unused = static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(), isUnused));
  if (unused == 0) return;
  TextTable remaining;
  remaining.makeRoomFor(m_count - unused);
  for (Entry& entry : m_entries) {
    if (entry.text.isShared()) remaining.add(entry.hash, std::move(entry.text));
  }
  std::swap(*this, remaining);
}

void TextTable::put(Entry entry) {
  const auto isNoText = [](const std::wstring&) { return false; };
  m_entries[placeOf(entry.hash, isNoText)] = std::move(entry);
}

void TextTable::makeRoomFor(std::size_t count) {
  if (hasRoomFor(count, m_entries.size())) return;
  std::size_t places = std::max(m_entries.size(), kFewestPlaces);
  while (!hasRoomFor(count, places)) places *= 2;
  std::vector<Entry> before = std::exchange(m_entries, std::vector<Entry>(places));
  for (Entry& entry : before) {
    if (!entry.text.empty()) put(std::move(entry));
  }
}
