#ifndef MIRN_HOST_NET_HEARTBEAT_H
#define MIRN_HOST_NET_HEARTBEAT_H

#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstddef>
#include <functional>

#include "net/event_loops.h"

namespace host {

/// Calls a function again and again, each time after it went through all event loops, which shows that they
/// turn. Is work for the loops until it is stopped. Outlives what it posted: destroy it when they have ended.
class Heartbeat {
 public:
  Heartbeat(EventLoops& loops, std::chrono::microseconds interval, std::function<void()> beat);

  /// No beat comes later than one that is under way. Safe from any thread.
  void stop();

 private:
  void passThrough(std::size_t loop);
  void beat();

  EventLoops& m_loops;
  const std::chrono::microseconds m_interval;
  const std::function<void()> m_beat;
  boost::asio::steady_timer m_timer;  // on the first loop
  bool m_isStopped = false;           // seen there alone
};

}  // namespace host

#endif
