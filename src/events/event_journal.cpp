#include "event_journal.h"

#include <boost/thread/lock_types.hpp>
#include <boost/thread/thread.hpp>
#include <limits>
#include <utility>

namespace {

/// A host may interrupt its own threads, by way of Boost.Thread. That is no affair of the journal, whose
/// mutex would not survive an exception out of its waits.
using Uninterrupted = boost::this_thread::disable_interruption;

constexpr std::uint64_t kMaxEvents = 1000;

/// The time `seconds` before `now`; the earliest of all where that time has no number.
std::int64_t before(std::int64_t now, std::uint64_t seconds) {
  using Limits = std::numeric_limits<std::int64_t>;
  constexpr auto kMaxSeconds = static_cast<std::uint64_t>(Limits::max() / kTicksPerSecond);
  if (seconds > kMaxSeconds) return Limits::min();
  const auto age = static_cast<std::int64_t>(seconds) * kTicksPerSecond;
  return now < Limits::min() + age ? Limits::min() : now - age;
}

}  // namespace

EventJournal& EventJournal::instance() {
  static EventJournal journal;
  return journal;
}

EventJournal::EventJournal(TickClock clock) : m_clock(std::move(clock)), m_maxEvents(kMaxEvents) {}

void EventJournal::add(Event event) {
  if (!event) return;
  EventSummary summary = event->summary();
  const Uninterrupted wait;
  const boost::unique_lock<boost::shared_mutex> lock(m_mutex);
  const std::int64_t now = m_clock();
  event->m_creationTime = now;
  m_events.push_front(std::move(event));
  if (m_events.size() > m_maxEvents) m_events.pop_back();
  m_ring.add(std::move(summary), now);
  m_sequence = m_ring.newest();
}

std::vector<EventJournal::Event> EventJournal::getRecent(std::uint64_t seconds) const {
  const auto limit = before(m_clock(), seconds);
  const Uninterrupted wait;
  const boost::shared_lock<boost::shared_mutex> lock(m_mutex);
  std::vector<Event> recent;
  for (const auto& event : m_events) {
    if (event->creationTime() < limit) break;
    recent.push_back(event);
  }
  return recent;
}

EventRing::Part EventJournal::getAfter(std::uint64_t sequence, std::uint64_t limit) const {
  const Uninterrupted wait;
  const boost::shared_lock<boost::shared_mutex> lock(m_mutex);
  return m_ring.after(sequence, limit);
}
