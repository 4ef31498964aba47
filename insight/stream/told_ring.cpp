#include "stream/told_ring.h"

#include <utility>

namespace insight {

void ToldRing::add(StreamId id, std::string frame, bool isAudit) {
  const std::uint64_t before = m_bytes;
  m_bytes += frame.size();
  m_items.push_back({std::move(id), std::move(frame), isAudit, before});
  if (m_items.size() <= m_most) return;
  m_items.pop_front();
  ++m_begin;
}

std::uint64_t ToldRing::bytesFrom(std::uint64_t place) const {
  return place == end() ? 0 : m_bytes - at(place).bytesBefore;
}

std::optional<std::uint64_t> ToldRing::placeBehind(const StreamId& id) const {
  for (std::uint64_t place = end(); place != begin(); --place) {
    if (at(place - 1).id == id) return place;
  }
  // What comes next may be held although it is not.
  if (!m_items.empty() && m_items.front().id == StreamId{id.epoch, id.row + 1}) return begin();
  return {};
}

std::uint64_t ToldRing::firstOf(const std::string& epoch) const {
  std::uint64_t place = begin();
  while (place != end() && at(place).id.epoch != epoch) ++place;
  return place;
}

}  // namespace insight
