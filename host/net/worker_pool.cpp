#include "net/worker_pool.h"

#include <boost/asio/post.hpp>
#include <utility>

namespace host {

WorkerPool::WorkerPool(std::size_t threads, const Waiting& most)
    : m_threadCount(threads), m_most(most), m_threads(threads) {}

WorkerPool::~WorkerPool() { join(); }

void WorkerPool::join() { m_threads.join(); }

bool WorkerPool::submit(const std::string& identity, std::function<void()> task) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const bool waits = m_taken >= m_threadCount;
  if (waits && !hasPlace(identity)) return false;
  ++m_taken;
  if (waits) {
    ++m_waiting;
    ++m_waitingOf[identity];
  }
  boost::asio::post(m_threads, [this, waits, identity, task = std::move(task)] {
    if (waits) leaveQueue(identity);
    task();
    const std::lock_guard<std::mutex> ended(m_mutex);
    --m_taken;
  });
  return true;
}

/// Under the lock.
bool WorkerPool::hasPlace(const std::string& identity) const {
  if (m_waiting >= m_most.tasks) return false;
  const auto own = m_waitingOf.find(identity);
  return identity.empty() || own == m_waitingOf.end() || own->second < m_most.tasksOfOne;
}

void WorkerPool::leaveQueue(const std::string& identity) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  --m_waiting;
  const auto own = m_waitingOf.find(identity);
  if (--own->second == 0) m_waitingOf.erase(own);
}

}  // namespace host
