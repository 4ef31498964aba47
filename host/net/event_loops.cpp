#include "net/event_loops.h"

#include <algorithm>
#include <boost/asio/post.hpp>
#include <exception>
#include <string>

#include "system/report.h"

namespace host {

namespace {

/// A failure in a handler costs its connection, not the thread.
void runUntilDone(boost::asio::io_context& io) {
  for (;;) {
    try {
      io.run();
      return;
    } catch (const std::exception& failure) {
      report(std::string("a connection failed: ") + failure.what());
    }
  }
}

}  // namespace

EventLoops::EventLoops(std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) m_loops.push_back(std::make_unique<Loop>());
}

EventLoops::IoContext& EventLoops::next() { return at(m_turn++ % size()); }

void EventLoops::start() {
  for (const auto& loop : m_loops) {
    m_threads.push_back(std::async(std::launch::async, [&io = loop->io] { runUntilDone(io); }));
  }
}

void EventLoops::letEnd() {
  boost::asio::post(first(), [this] {
    for (const auto& loop : m_loops) loop->guard.reset();
  });
}

bool EventLoops::waitUntil(std::chrono::steady_clock::time_point deadline) const {
  return std::all_of(m_threads.begin(), m_threads.end(), [&](const std::future<void>& thread) {
    return thread.wait_until(deadline) == std::future_status::ready;
  });
}

void EventLoops::wait() const {
  for (const auto& thread : m_threads) thread.wait();
}

}  // namespace host
