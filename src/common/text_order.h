#ifndef MIRN_COMMON_TEXT_ORDER_H
#define MIRN_COMMON_TEXT_ORDER_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "shared_text.h"

/// The first eight units of a text as a number: of two texts, the one whose number is less comes first. A
/// unit of 255 or more stands as 255, and nothing behind it is looked at.
inline std::uint64_t beginningOf(const std::wstring& text) {
  constexpr std::uint32_t kMost = 0xFF;
  unsigned shift = 64;
  std::uint64_t beginning = 0;
  for (const wchar_t character : text) {
    const std::uint32_t unit = std::min(static_cast<std::uint32_t>(character), kMost);
    shift -= 8;
    beginning |= std::uint64_t{unit} << shift;
    if (unit == kMost || shift == 0) break;
  }
  return beginning;
}

/// Sorts texts, of which there are many that lie all over the memory: most are looked at once.
inline void sortTexts(std::vector<SharedText>& texts) {
  using WithBeginning = std::pair<std::uint64_t, SharedText>;
  std::vector<WithBeginning> places;
  places.reserve(texts.size());
  for (SharedText& text : texts) {
    const std::uint64_t beginning = beginningOf(text);
    places.emplace_back(beginning, std::move(text));
  }
  std::sort(places.begin(), places.end());
  for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = std::move(places[i].second);
}

#endif
