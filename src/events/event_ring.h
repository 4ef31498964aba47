#ifndef MIRN_EVENTS_EVENT_RING_H
#define MIRN_EVENTS_EVENT_RING_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "event_summary.h"
#include "ServiceObject.h"

/// The last 65,536 events in short, numbered from 1 without a gap. Takes no lock.
class EventRing {
 public:
  using Summary = std::shared_ptr<const EventSummary>;

  static constexpr std::size_t kSize = 65536;

  /// The events with a number above `sequence`, oldest first.
  struct Part {
    std::uint64_t oldest = 0;  ///< Number of the oldest event of the ring; 0 when there is none.
    std::vector<Summary> events;

    /// An object with `oldest` (unsigned), and `events`, a list of what the events tell.
    ovra::data_transfer::ServiceObject toServiceObject() const;
  };

  /// Gives the event its number, and lets the oldest go when there are too many.
  void add(EventSummary event, std::int64_t ticks);

  Part after(std::uint64_t sequence, std::uint64_t limit) const;

  /// The number of the newest event; 0 before the first.
  std::uint64_t newest() const { return m_newest; }

 private:
  std::deque<Summary> m_events;  ///< Newest at the back.
  std::uint64_t m_newest = 0;
};

#endif
