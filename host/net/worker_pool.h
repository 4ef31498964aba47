#ifndef MIRN_HOST_NET_WORKER_POOL_H
#define MIRN_HOST_NET_WORKER_POOL_H

#include <boost/asio/thread_pool.hpp>
#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>

namespace host {

/// Threads for tasks that may block for long, first come, first served. Safe from any thread.
class WorkerPool {
 public:
  /// What may wait while all threads are busy.
  struct Waiting {
    std::size_t tasks;       ///< Of all together.
    std::size_t tasksOfOne;  ///< Of one identity; those of none share no such bound.
  };

  WorkerPool(std::size_t threads, const Waiting& most);
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;
  ~WorkerPool();

  /// False when too many tasks wait, or too many of `identity`: `task` is not taken then. No task may
  /// raise anything.
  bool submit(const std::string& identity, std::function<void()> task);

  /// Waits for all tasks; none may be submitted afterwards. The destructor does it too.
  void join();

 private:
  bool hasPlace(const std::string& identity) const;
  void leaveQueue(const std::string& identity);

  const std::size_t m_threadCount;
  const Waiting m_most;
  std::mutex m_mutex;
  std::size_t m_taken = 0;  // those that run and those that wait
  std::size_t m_waiting = 0;
  std::map<std::string, std::size_t> m_waitingOf;  // by identity; no entry for 0
  boost::asio::thread_pool m_threads;
};

}  // namespace host

#endif
