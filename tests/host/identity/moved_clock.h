#ifndef MIRN_TESTS_HOST_IDENTITY_MOVED_CLOCK_H
#define MIRN_TESTS_HOST_IDENTITY_MOVED_CLOCK_H

#include "identity/steady_clock.h"

namespace host {

/// A clock that stands until a test moves it.
class MovedClock {
 public:
  SteadyClock clock() {
    return [this] { return m_now; };
  }
  void pass(std::chrono::milliseconds time) { m_now += time; }

 private:
  std::chrono::steady_clock::time_point m_now{std::chrono::hours(1)};
};

}  // namespace host

#endif
