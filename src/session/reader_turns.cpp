#include "reader_turns.h"

#include <boost/chrono/duration.hpp>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/lock_types.hpp>
#include <boost/thread/thread.hpp>

ReaderTurns::Turn ReaderTurns::beginWaiting() {
  const boost::lock_guard<boost::mutex> lock(m_mutex);
  ++m_waiting;
  return m_turn;
}

void ReaderTurns::endWaiting(Turn turn) {
  const boost::lock_guard<boost::mutex> lock(m_mutex);
  --m_waiting;
  const bool wasDue = turn != m_turn;
  if (wasDue && --m_due == 0) m_allIn.notify_all();
}

void ReaderTurns::letIn() {
  const boost::lock_guard<boost::mutex> lock(m_mutex);
  ++m_turn;
  m_due = m_waiting;
}

bool ReaderTurns::awaitThoseDue(std::chrono::microseconds limit) {
  const boost::this_thread::disable_interruption wait;
  boost::unique_lock<boost::mutex> lock(m_mutex);
  return m_allIn.wait_for(lock, boost::chrono::microseconds(limit.count()), [this] { return m_due == 0; });
}
