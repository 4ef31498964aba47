#ifndef MIRN_LIBRARY_TEXT_SEQUENCE_H
#define MIRN_LIBRARY_TEXT_SEQUENCE_H

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "hash_index.h"
#include "shared_text.h"

/// Texts that are each made once, in the order in which the last picture asked for them first. The next
/// picture mostly asks for the same in the same order: then each stands behind the one before, or is that
/// one, or stands where the last picture leapt to. Only what is at none of these places is searched by hash.
/// `Known` is a kind of known_text.h. For one thread at a time.
template <class Known>
class TextSequence {
 public:
  /// The text that `Known` makes of this, made when it is asked for first. A field has up to
  /// `Known::kLongest` bytes. Changes nothing when it fails.
  SharedText of(typename Known::Source source) {
    if (isAt(m_due, source)) return taken(m_due);
    if (m_due > 0 && isAt(m_due - 1, source)) return taken(m_due - 1);
    const Position leapt = m_leap < m_leaps.size() ? std::min(m_leaps[m_leap], m_asked) : m_asked;
    const Position position = isAt(leapt, source) ? leapt : searched(source);
    noteLeap(position);
    return taken(position);
  }

  /// The same for a record's field, whose size is the bound.
  template <std::size_t kSize>
  SharedText of(const char (&field)[kSize]) {
    static_assert(kSize <= Known::kLongest);
    return of(std::string_view(field, kSize));
  }

  /// Begins with the next picture. Of what this one did not ask for, lets go of what nobody else has.
  void startOver() {
    const auto unused = std::remove_if(m_known.begin() + m_asked, m_known.end(),
                                       [](const Known& known) { return !known.text().isShared(); });
    m_known.erase(unused, m_known.end());
    m_known.shrink_to_fit();
    m_leaps.resize(m_leap);
    m_index = HashIndex();
    m_asked = m_due = 0;
    m_leap = 0;
  }

  std::size_t size() const { return m_known.size(); }

 private:
  using Position = HashIndex::Position;

  bool isAt(Position position, typename Known::Source source) const {
    return position < m_known.size() && m_known[position].isMadeOf(source);
  }

  SharedText taken(Position position) {
    m_due = position + 1;
    m_asked = std::max(m_asked, m_due);
    return m_known[position].text();
  }

  void noteLeap(Position position) {
    if (position == m_due) return;
    if (m_leap == m_leaps.size()) m_leaps.push_back(position);
    m_leaps[m_leap++] = position;
  }

  /// Where the text stands, which is among those that were asked for, or behind the last of them.
  Position searched(typename Known::Source source) {
    if (m_index.size() < m_known.size()) m_index = indexed();
    const std::size_t hash = Known::hashOf(source);
    Position position = m_index.find(hash, [&](Position candidate) { return isAt(candidate, source); });
    if (position == HashIndex::kNowhere) position = added(hash, Known(source));
    if (position <= m_asked) return position;
    m_index.exchange(hash, position, m_known[m_asked].hash(), m_asked);
    std::swap(m_known[position], m_known[m_asked]);
    return m_asked;
  }

  HashIndex indexed() const {
    HashIndex index(m_known.size());
    for (Position position = 0; position < m_known.size(); ++position) {
      index.add(m_known[position].hash(), position);
    }
    return index;
  }

  Position added(std::size_t hash, Known known) {
    const auto position = static_cast<Position>(m_known.size());
    m_index.makeRoomFor(m_known.size() + 1);
    m_known.push_back(std::move(known));
    m_index.add(hash, position);
    return position;
  }

  // First those that this picture has asked for, then those of the last one that it has not.
  std::vector<Known> m_known;
  Position m_asked = 0;           // how many of them the picture has asked for
  Position m_due = 0;             // behind what was asked for last
  std::vector<Position> m_leaps;  // where those led that were asked for out of order, this picture's first
  std::size_t m_leap = 0;         // how many of them are this picture's
  HashIndex m_index;              // empty until something is searched
};

#endif
