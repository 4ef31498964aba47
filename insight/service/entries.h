#ifndef MIRN_INSIGHT_SERVICE_ENTRIES_H
#define MIRN_INSIGHT_SERVICE_ENTRIES_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <string>
#include <utility>

#include "alarms/alarm_tracker.h"
#include "history/entry.h"
#include "jobs/job_tracker.h"
#include "service/service_note.h"

/// What happens as entries of the history; all but a plug-in's events are numbered here.

namespace insight {

/// A change that a client asks for. Plain value.
struct ClientChange {
  std::string actor;
  std::string operation;
  ObjectRef object;             ///< That it is about; without a type where it names none.
  bool cancels = false;         ///< It stops work.
  boost::json::object details;  ///< What else is known, such as "client".
};

/// The numbers of one epoch. One thread at a time.
class EntryNumbers {
 public:
  explicit EntryNumbers(std::string epoch) : m_epoch(std::move(epoch)) {}

  const std::string& epoch() const { return m_epoch; }
  std::uint64_t next() { return ++m_last; }
  /// The first of two that follow each other.
  std::uint64_t nextPair() { return std::exchange(m_last, m_last + 2) + 1; }

 private:
  const std::string m_epoch;
  std::uint64_t m_last = 0;
};

Entry entryOf(const AlarmChange& change, EntryNumbers& numbers, std::int64_t nowMs);
/// Not for progress, which is no entry.
Entry entryOf(const JobChange& change, EntryNumbers& numbers, std::int64_t nowMs);

/// How a change stands: `outcome` is "begun", "done" or "refused".
Entry entryOf(const ClientChange& change, const std::string& outcome, std::int64_t nowMs);
/// What becomes of a change that was begun, and of whose end nothing is known.
Entry unknownEndOf(Entry begun, std::int64_t nowMs);

Entry entryOf(const ServiceNote& note, EntryNumbers& numbers, std::int64_t nowMs);

/// `count` events that the plug-in had, and holds no more.
Entry entryOfLostEvents(std::uint64_t count, EntryNumbers& numbers, std::int64_t nowMs);

}  // namespace insight

#endif
