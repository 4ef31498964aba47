#ifndef MIRN_HOST_IDENTITY_ADMISSION_H
#define MIRN_HOST_IDENTITY_ADMISSION_H

#include <optional>
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
  Admission(const std::string& tokenFile, Trusted trusted, bool takesParameter, const ReportLine& report);
  Admission(const Admission&) = delete;
  Admission& operator=(const Admission&) = delete;

  const IAuthenticator& authenticator() const { return m_clients; }

  /// Looks at the table of tokens at once.
  void reload() { m_tokens.reload(); }

  /// Whether the file of the first token holds one that lets somebody in.
  bool hasFirstToken() const { return m_hasFirst; }

 private:
  bool m_hasFirst;
  TokenStore m_tokens;
  PassingSecrets m_sessions;
  GuessDelay m_delay;
  KnownClients m_clients;
};

}  // namespace host

#endif
