#ifndef MIRN_HOST_IDENTITY_ADMISSION_H
#define MIRN_HOST_IDENTITY_ADMISSION_H

#include <chrono>
#include <string>

#include "identity/guess_delay.h"
#include "identity/known_clients.h"
#include "identity/passing_secrets.h"
#include "identity/token_store.h"

namespace host {

/// Everything that a running host keeps to know its clients. Safe from any thread.
class Admission {
 public:
  /// Makes the first token and the table beside `tokenFile` where they are missing. What is wrong with the
  /// table goes to `report`. Raises `std::runtime_error` when they cannot be had.
  Admission(const std::string& tokenFile, Trusted trusted, bool takesParameter, const ReportLine& report,
            const SteadyClock& clock = std::chrono::steady_clock::now);
  Admission(const Admission&) = delete;
  Admission& operator=(const Admission&) = delete;

  const IAuthenticator& authenticator() const { return m_clients; }

  /// A sign-in code for `identity`: 128 random bits, good for ten minutes and one session.
  std::string makeCode(const Identity& identity);

  struct Session {
    std::string token;
    Role role;
    std::chrono::seconds life;
  };

  /// The session that `code` opens. Raises the `Refusal` of somebody unknown, the same for a code that
  /// was never made, has been used or is too old; it waits by the client's address.
  Session signIn(const std::string& code, const Client& client);

  /// Ends the session of `identity`. False when it has none.
  bool signOut(const Identity& identity);

  /// Looks at the table of tokens at once.
  void reload() { m_tokens.reload(); }

  /// Whether the file of the first token holds one that lets somebody in.
  bool hasFirstToken() const { return m_hasFirst; }

 private:
  bool m_hasFirst;
  TokenStore m_tokens;
  PassingSecrets m_codes;
  PassingSecrets m_sessions;
  GuessDelay m_delay;
  KnownClients m_clients;
};

}  // namespace host

#endif
