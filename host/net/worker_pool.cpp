#include "net/worker_pool.h"

#include <boost/asio/post.hpp>
#include <utility>

namespace host {

WorkerPool::WorkerPool(std::size_t threads, std::size_t maxWaiting)
    : m_maxPending(threads + maxWaiting), m_threads(threads) {}

WorkerPool::~WorkerPool() { join(); }

void WorkerPool::join() { m_threads.join(); }

bool WorkerPool::submit(std::function<void()> task) {
  if (m_pending.fetch_add(1) >= m_maxPending) {
    --m_pending;
    return false;
  }
  boost::asio::post(m_threads, [this, task = std::move(task)] {
    task();
    --m_pending;
  });
  return true;
}

}  // namespace host
