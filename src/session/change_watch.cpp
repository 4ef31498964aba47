#include "change_watch.h"

#include <algorithm>
#include <array>
#include <boost/algorithm/hex.hpp>
#include <boost/chrono/duration.hpp>
#include <boost/chrono/system_clocks.hpp>
#include <boost/thread/condition_variable.hpp>
#include <boost/thread/lock_types.hpp>
#include <boost/thread/mutex.hpp>
#include <boost/thread/thread.hpp>
#include <iterator>
#include <utility>

#include "event_journal.h"
#include "random_bytes.h"

namespace {

/// A host may interrupt its own threads, by way of Boost.Thread. That is no affair of the watch.
using Uninterrupted = boost::this_thread::disable_interruption;
using Lock = boost::unique_lock<boost::mutex>;
using Clock = boost::chrono::steady_clock;

/// Far beyond any sensible wait, and far from the end of the clock.
constexpr std::int64_t kLongestWait = std::int64_t{365} * 24 * 3600 * 1000;  // milliseconds

/// What all watches of the module share: the journal's events are news for each of them.
struct Signal {
  boost::mutex mutex;
  boost::condition_variable changed;
  // The last numbers given away.
  std::uint64_t revision = 0;
  std::uint64_t structure = 0;
  std::uint64_t announced = 0;  ///< Number of the last event that waiters were woken for.
};

Signal& signal() {
  static Signal signal;
  return signal;
}

std::wstring randomEpoch() {
  std::array<unsigned char, 8> bytes{};
  fillWithRandomBytes(bytes.data(), bytes.size());
  std::wstring digits;
  boost::algorithm::hex_lower(bytes.begin(), bytes.end(), std::back_inserter(digits));
  return digits;
}

Clock::time_point deadlineAfter(std::int64_t milliseconds) {
  return Clock::now() + boost::chrono::milliseconds(std::clamp<std::int64_t>(milliseconds, 0, kLongestWait));
}

}  // namespace

ChangeWatch::ChangeWatch() {
  Signal& shared = signal();
  const Lock lock(shared.mutex);
  m_revision = ++shared.revision;
  m_structure = ++shared.structure;
}

ChangeWatch::~ChangeWatch() { close(); }

const std::wstring& ChangeWatch::epoch() {
  static const std::wstring epoch = randomEpoch();
  return epoch;
}

ovra::PluginPosition ChangeWatch::position() const {
  ovra::PluginPosition position;
  position.epoch = epoch();
  const Lock lock(signal().mutex);
  position.revision = m_revision;
  position.structure = m_structure;
  position.sequence = EventJournal::instance().sequence();
  return position;
}

bool ChangeWatch::differsFrom(const ovra::PluginPosition& known) const {
  return known.revision != m_revision || known.sequence != EventJournal::instance().sequence();
}

bool ChangeWatch::waitForChange(const ovra::PluginPosition& known, std::int64_t milliseconds) {
  if (known.epoch != epoch()) return true;
  const Clock::time_point deadline = deadlineAfter(milliseconds);
  const Uninterrupted wait;
  Signal& shared = signal();
  Lock lock(shared.mutex);
  ++m_waiters;
  shared.changed.wait_until(lock, deadline, [&] { return !m_open || differsFrom(known); });
  // The one who closes waits for the last to leave.
  if (--m_waiters == 0 && !m_open) shared.changed.notify_all();
  return differsFrom(known);
}

std::uint64_t ChangeWatch::waiters() const {
  const Lock lock(signal().mutex);
  return m_waiters;
}

void ChangeWatch::raise(SnapshotDifference difference) {
  if (difference == SnapshotDifference::kNone) return;
  Signal& shared = signal();
  {
    const Lock lock(shared.mutex);
    m_revision = ++shared.revision;
    if (difference == SnapshotDifference::kStructure) m_structure = ++shared.structure;
  }
  shared.changed.notify_all();
}

void ChangeWatch::announceEvents() {
  Signal& shared = signal();
  {
    // Whoever looked at the sequence before the events came waits by now.
    const Lock lock(shared.mutex);
    const std::uint64_t last = EventJournal::instance().sequence();
    if (std::exchange(shared.announced, last) == last) return;
  }
  shared.changed.notify_all();
}

void ChangeWatch::open() {
  const Lock lock(signal().mutex);
  m_open = true;
}

/// Leaves the shared signal alone where there is nothing to close: at the end of the process a session may
/// outlive it.
void ChangeWatch::close() {
  if (!m_open) return;
  const Uninterrupted wait;
  Signal& shared = signal();
  Lock lock(shared.mutex);
  m_open = false;
  shared.changed.notify_all();
  shared.changed.wait(lock, [this] { return m_waiters == 0; });
}
