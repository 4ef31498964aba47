#ifndef MIRN_EVENTS_EVENT_JOURNAL_H
#define MIRN_EVENTS_EVENT_JOURNAL_H

#include <atomic>
#include <boost/thread/shared_mutex.hpp>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "event_records.h"
#include "event_ring.h"
#include "tick_clock.h"

/// The last 1000 events, and many more in short; in memory only. Every operation is safe from any thread. The
/// journal calls nobody but its clock, so that it may be used under the session's lock.
class EventJournal {
 public:
  using Event = std::shared_ptr<mirn_events::base_event>;

  /// The journal of the module: made at its first use, by whichever thread, and destroyed at process exit.
  static EventJournal& instance();

  explicit EventJournal(TickClock clock = currentTicks);

  /// Stamps the event with the time now and makes it the newest; the oldest goes when there are too many. A
  /// null pointer is ignored. An event is added once, to one journal.
  void add(Event event);

  /// The events of the last `seconds`, newest first, shared with the journal. An age beyond all clocks takes
  /// every event; 0 takes those of the present tick.
  std::vector<Event> getRecent(std::uint64_t seconds) const;

  /// The events with a number above `sequence`, oldest first, at most `limit`, in short. Their times are
  /// those of the events.
  EventRing::Part getAfter(std::uint64_t sequence, std::uint64_t limit) const;

  /// The number of the newest event, which is how many there have been. Takes no lock.
  std::uint64_t sequence() const { return m_sequence; }

 private:
  // Constant after construction.
  const TickClock m_clock;
  const std::uint64_t m_maxEvents;

  std::deque<Event> m_events;  ///< Newest at the front; guarded by m_mutex.
  EventRing m_ring;            ///< Likewise.
  std::atomic<std::uint64_t> m_sequence{0};

 protected:
  /// Not private, so that a test can see what is done under it and what is not.
  mutable boost::shared_mutex m_mutex;
};

#endif
