#ifndef MIRN_HOST_API_PATH_KEYS_H
#define MIRN_HOST_API_PATH_KEYS_H

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace host {

/// The path keys that a plug-in handles. Constant after construction.
class PathKeys {
 public:
  /// A key, and how many segments it takes up.
  struct Match {
    std::wstring key;
    std::size_t segmentCount;
  };

  explicit PathKeys(const std::vector<std::wstring>& keys);

  /// The longest key that `segments` start with, in whole segments.
  std::optional<Match> longest(const std::vector<std::wstring>& segments) const;

 private:
  std::set<std::wstring> m_keys;
  std::size_t m_longestCount = 0;
};

}  // namespace host

#endif
