#ifndef MIRN_HOST_NET_LANES_H
#define MIRN_HOST_NET_LANES_H

#include <functional>
#include <string>

#include "api/job.h"
#include "net/worker_pool.h"
#include "service_limits.h"

namespace host {

/// Threads and a queue for each `Lane`, so that calls of one that hang keep no other one waiting. Safe from
/// any thread.
class Lanes {
 public:
  explicit Lanes(const Limits& limits);

  /// As `WorkerPool::submit`, each lane by itself.
  bool submit(Lane lane, const std::string& identity, std::function<void()> task);

  /// As `WorkerPool::join`, for all of them.
  void join();

 private:
  WorkerPool& poolOf(Lane lane);

  WorkerPool m_own;
  WorkerPool m_reads;
  WorkerPool m_changes;
  WorkerPool m_parts;
};

}  // namespace host

#endif
