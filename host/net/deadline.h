#ifndef MIRN_HOST_NET_DEADLINE_H
#define MIRN_HOST_NET_DEADLINE_H

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <functional>
#include <memory>

namespace host {

/// Does something when a time has run out, which is put off again and again and seldom comes: to put off
/// costs a look at the clock, since a timer that runs and comes too early is set again only then. Lives on
/// one strand, but may end anywhere.
class Deadline {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  /// `onEnd` comes on the strand, and may come while the deadline ends elsewhere.
  Deadline(const boost::asio::any_io_executor& executor, std::function<void()> onEnd);

  void set(Moment end) { m_state->set(end); }
  void setAfter(std::chrono::milliseconds time) { set(std::chrono::steady_clock::now() + time); }
  void setNever() { m_state->end = Moment::max(); }

 private:
  /// Apart, so that a wait that comes late finds it gone.
  struct State : std::enable_shared_from_this<State> {
    State(const boost::asio::any_io_executor& executor, std::function<void()> given);

    void set(Moment moment);
    void wait();
    void onTime();

    boost::asio::steady_timer timer;
    const std::function<void()> onEnd;
    Moment end = Moment::max();
    Moment next = Moment::max();  // when the timer comes
  };

  std::shared_ptr<State> m_state;
};

}  // namespace host

#endif
