#ifndef MIRN_HOST_NET_EVENT_LOOPS_H
#define MIRN_HOST_NET_EVENT_LOOPS_H

#include <atomic>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <chrono>
#include <cstddef>
#include <future>
#include <memory>
#include <vector>

namespace host {

/// Loops of input and output, each turned by one thread of its own: what lives on one of them is never at
/// work twice at once, and wakes no other thread. Belongs to one thread, unless told otherwise.
class EventLoops {
 public:
  using IoContext = boost::asio::io_context;

  /// `count` is at least 1.
  explicit EventLoops(std::size_t count);
  EventLoops(const EventLoops&) = delete;
  EventLoops& operator=(const EventLoops&) = delete;

  /// The one for what there is only one of.
  IoContext& first() { return m_loops.front()->io; }

  /// Each in turn, for what there is much of. Safe from any thread.
  IoContext& next();

  std::size_t size() const { return m_loops.size(); }
  IoContext& at(std::size_t index) { return m_loops.at(index)->io; }

  void start();

  /// Lets each loop end as soon as it has nothing left to do; what has been posted to the first one goes
  /// ahead, and may still bring work to the others. Safe from any thread.
  void letEnd();

  /// False when some have not ended by then.
  bool waitUntil(std::chrono::steady_clock::time_point deadline) const;

  /// Until all have ended.
  void wait() const;

 private:
  struct Loop {
    Loop() : io(1), guard(io.get_executor()) {}  // of one thread: no other one has to be woken for work

    IoContext io;
    boost::asio::executor_work_guard<IoContext::executor_type> guard;
  };

  std::vector<std::unique_ptr<Loop>> m_loops;
  std::atomic<std::size_t> m_turn{0};
  std::vector<std::future<void>> m_threads;
};

}  // namespace host

#endif
