#ifndef MIRN_HOST_IDENTITY_GUESS_DELAY_H
#define MIRN_HOST_IDENTITY_GUESS_DELAY_H

#include <chrono>
#include <cstddef>
#include <list>
#include <mutex>
#include <string>
#include <unordered_map>

#include "identity/steady_clock.h"

namespace host {

/// How long whoever shows a wrong secret waits for the answer: the longer, the more of them came from the
/// address. Of IPv6 the first half counts, which one customer has as a whole. Safe from any thread.
class GuessDelay {
 public:
  static constexpr std::chrono::milliseconds kFirst{100};     ///< Then twice as long each time,
  static constexpr std::chrono::milliseconds kLongest{5000};  ///< up to this.
  static constexpr std::chrono::minutes kMemory{10};  ///< An address is forgotten after so long a quiet.
  static constexpr std::size_t kAddresses = 4096;     ///< Beyond, the one quiet for longest is forgotten.

  explicit GuessDelay(SteadyClock clock) : m_clock(std::move(clock)) {}

  /// Takes down a wrong secret, and tells how long its answer waits.
  std::chrono::milliseconds afterWrong(const std::string& address);

  /// How many addresses are remembered.
  std::size_t size() const;

 private:
  struct Guesser {
    std::string key;
    std::chrono::milliseconds delay;
    std::chrono::steady_clock::time_point last;
  };

  void forgetOld();

  const SteadyClock m_clock;
  mutable std::mutex m_mutex;
  std::list<Guesser> m_guessers;  ///< the latest first
  std::unordered_map<std::string, std::list<Guesser>::iterator> m_byKey;
};

}  // namespace host

#endif
