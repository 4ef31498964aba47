#ifndef MIRN_INSIGHT_STREAM_TOLD_RING_H
#define MIRN_INSIGHT_STREAM_TOLD_RING_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "stream/stream_id.h"

namespace insight {

/// The last entries that were told, as the bytes that listeners get. A place counts all that there ever were.
/// One thread at a time.
class ToldRing {
 public:
  struct Item {
    StreamId id;
    std::string frame;
    bool isAudit = false;
    std::uint64_t bytesBefore = 0;  ///< Of all that was told ahead of it.
  };

  explicit ToldRing(std::size_t most) : m_most(most) {}

  void add(StreamId id, std::string frame, bool isAudit);

  std::uint64_t begin() const { return m_begin; }
  std::uint64_t end() const { return m_begin + m_items.size(); }
  /// At a place from `begin` to before `end`.
  const Item& at(std::uint64_t place) const { return m_items[place - m_begin]; }
  /// The bytes from a place on.
  std::uint64_t bytesFrom(std::uint64_t place) const;

  /// The place behind the entry with an id; nothing where that entry is not held.
  std::optional<std::uint64_t> placeBehind(const StreamId& id) const;
  /// The place of the first entry of an epoch; `end` where there is none.
  std::uint64_t firstOf(const std::string& epoch) const;

 private:
  const std::size_t m_most;
  std::deque<Item> m_items;
  std::uint64_t m_begin = 0;
  std::uint64_t m_bytes = 0;
};

}  // namespace insight

#endif
