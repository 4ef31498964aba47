#include "net/heartbeat.h"

#include <boost/asio/post.hpp>
#include <utility>

namespace host {

Heartbeat::Heartbeat(EventLoops& loops, std::chrono::microseconds interval, std::function<void()> beat)
    : m_loops(loops), m_interval(interval), m_beat(std::move(beat)), m_timer(loops.first()) {
  passThrough(0);
}

void Heartbeat::stop() {
  boost::asio::post(m_loops.first(), [this] {
    m_isStopped = true;
    m_timer.cancel();
  });
}

/// From this loop on, and back to the first.
void Heartbeat::passThrough(std::size_t loop) {
  const bool isLast = loop + 1 >= m_loops.size();
  boost::asio::post(m_loops.at(loop), [this, loop, isLast] {
    if (!isLast) return passThrough(loop + 1);
    boost::asio::post(m_loops.first(), [this] { beat(); });
  });
}

void Heartbeat::beat() {
  if (m_isStopped) return;
  m_beat();
  m_timer.expires_after(m_interval);
  m_timer.async_wait([this](const boost::system::error_code& error) {
    if (!error) passThrough(0);
  });
}

}  // namespace host
