#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_EVENT_GATE_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_EVENT_GATE_H

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>

#include "VEXL2.h"

/// Where `VexEventWait` waits. Real time plays no part: a wait ends when the test says so, or at once after
/// `release`. Every operation may be called from any thread.
class EventGate {
 public:
  /// The library's side: waits for the next `wake` and returns its status; `VEX_STATUS_TIMEOUT`
  /// when released.
  VEX_STATUS wait();

  /// Ends the wait that goes on, or else the next one, with this status.
  void wake(VEX_STATUS status = VEX_STATUS_SUCCESS);

  /// As `wake`, and returns when the thread has come back to wait again: whatever it does after a wait is
  /// done. Meant for one waiting thread.
  void wakeAndSettle(VEX_STATUS status = VEX_STATUS_SUCCESS);

  /// Returns when `count` waits have begun since the reset.
  void waitForEventWaits(std::uint64_t count);

  /// How many waits have begun since the reset.
  std::uint64_t eventWaits() const;

  /// From now on every wait, the present one included, returns `VEX_STATUS_TIMEOUT` at once. A test calls it
  /// before it joins the waiting thread.
  void release();

  /// Ends the effect of `release` and forgets wakes that nobody took. The count starts at 0 again.
  void reset();

 private:
  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  std::deque<VEX_STATUS> m_wakes;
  std::uint64_t m_waits = 0;
  std::uint64_t m_waitLastWoken = 0;
  bool m_released = false;
};

#endif
