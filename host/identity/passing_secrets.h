#ifndef MIRN_HOST_IDENTITY_PASSING_SECRETS_H
#define MIRN_HOST_IDENTITY_PASSING_SECRETS_H

#include <chrono>
#include <cstddef>
#include <list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "identity/identity.h"
#include "identity/steady_clock.h"

namespace host {

/// Secrets that stand for somebody for a while and end with the process: sign-in codes, session tokens. Of
/// each only the hash is kept. Safe from any thread.
class PassingSecrets {
 public:
  /// Beyond `max` secrets the oldest one ends.
  PassingSecrets(std::chrono::seconds life, std::size_t max, SteadyClock clock)
      : m_life(life), m_max(max), m_clock(std::move(clock)) {}

  void add(std::string_view secret, const Identity& identity);

  /// Whom the secret with this hash stands for, found in a time that tells nothing of the others.
  std::optional<Identity> find(std::string_view hash);

  /// The same, and the secret ends: of many who show it at once, one gets somebody.
  std::optional<Identity> take(std::string_view hash);

  std::chrono::seconds life() const { return m_life; }

 private:
  struct Secret {
    std::string hash;
    Identity identity;
    std::chrono::steady_clock::time_point end;
  };

  std::list<Secret>::iterator search(std::string_view hash);

  const std::chrono::seconds m_life;
  const std::size_t m_max;
  const SteadyClock m_clock;
  std::mutex m_mutex;
  std::list<Secret> m_secrets;  ///< the oldest first
};

}  // namespace host

#endif
