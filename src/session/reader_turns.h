#ifndef MIRN_SESSION_READER_TURNS_H
#define MIRN_SESSION_READER_TURNS_H

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/mutex.hpp>
#include <chrono>
#include <cstdint>

/// Whose turn it is where exchanges follow each other so fast that a reader who was woken finds the door shut
/// again: readers that wait while an exchange goes on come in before the next. Safe from any thread.
class ReaderTurns {
 public:
  /// What a reader keeps from `beginWaiting` to `endWaiting`.
  using Turn = std::uint64_t;

  /// A reader that could not come in at once. `endWaiting` follows, in or not.
  Turn beginWaiting();
  void endWaiting(Turn turn);

  /// An exchange ends: whoever waits now is due before the next.
  void letIn();
  /// Waits until those that are due ceased to wait, and no longer than `limit`: it is a courtesy, on which
  /// nothing else may hang. Returns whether none is due any more.
  bool awaitThoseDue(std::chrono::microseconds limit);

 private:
  boost::mutex m_mutex;
  boost::condition_variable m_allIn;
  Turn m_turn = 0;
  std::uint64_t m_waiting = 0;
  std::uint64_t m_due = 0;
};

#endif
