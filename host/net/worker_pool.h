#ifndef MIRN_HOST_NET_WORKER_POOL_H
#define MIRN_HOST_NET_WORKER_POOL_H

#include <atomic>
#include <boost/asio/thread_pool.hpp>
#include <cstddef>
#include <functional>

namespace host {

/// The threads that call the plug-in, whose calls may block for long. Safe from any thread.
class WorkerPool {
 public:
  /// `maxWaiting` tasks may wait while all `threads` are busy.
  WorkerPool(std::size_t threads, std::size_t maxWaiting);
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;
  ~WorkerPool();

  /// False when too many tasks wait: `task` is not taken then. A task must not raise.
  bool submit(std::function<void()> task);

  /// Waits for all tasks; none may be submitted afterwards. The destructor does it too.
  void join();

 private:
  const std::size_t m_maxPending;
  std::atomic<std::size_t> m_pending{0};
  boost::asio::thread_pool m_threads;
};

}  // namespace host

#endif
