#include "net/deadline.h"

#include <utility>

namespace host {

Deadline::Deadline(const boost::asio::any_io_executor& executor, std::function<void()> onEnd)
    : m_state(std::make_shared<State>(executor, std::move(onEnd))) {}

Deadline::State::State(const boost::asio::any_io_executor& executor, std::function<void()> given)
    : timer(executor), onEnd(std::move(given)) {}

void Deadline::State::set(Moment moment) {
  end = moment;
  if (end < next) wait();
}

void Deadline::State::wait() {
  next = end;
  timer.expires_at(end);
  timer.async_wait([weak = weak_from_this()](const boost::system::error_code& error) {
    const auto self = weak.lock();
    if (!error && self) self->onTime();
  });
}

void Deadline::State::onTime() {
  next = Moment::max();
  if (end == Moment::max()) return;
  if (std::chrono::steady_clock::now() < end) return wait();
  end = Moment::max();
  onEnd();
}

}  // namespace host
