#include "api/path_keys.h"

#include <algorithm>

namespace host {

PathKeys::PathKeys(const std::vector<std::wstring>& keys) : m_keys(keys.begin(), keys.end()) {
  for (const std::wstring& key : keys) {
    const auto slashes = static_cast<std::size_t>(std::count(key.begin(), key.end(), L'/'));
    m_longestCount = std::max(m_longestCount, slashes + 1);
  }
}

std::optional<PathKeys::Match> PathKeys::longest(const std::vector<std::wstring>& segments) const {
  std::optional<Match> match;
  std::wstring start;
  for (std::size_t count = 1; count <= std::min(segments.size(), m_longestCount); ++count) {
    if (count > 1) start += L'/';
    start += segments[count - 1];
    if (m_keys.count(start) != 0) match = Match{start, count};
  }
  return match;
}

}  // namespace host
