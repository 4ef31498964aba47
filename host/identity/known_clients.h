#ifndef MIRN_HOST_IDENTITY_KNOWN_CLIENTS_H
#define MIRN_HOST_IDENTITY_KNOWN_CLIENTS_H

#include <chrono>
#include <map>
#include <string>
#include <string_view>

#include "answers/answer.h"
#include "identity/authenticator.h"
#include "identity/guess_delay.h"
#include "identity/local_roles.h"
#include "identity/passing_secrets.h"
#include "identity/token_store.h"

namespace host {

/// What somebody unknown is told: always the same, after `wait`.
Refusal unknownClient(std::chrono::milliseconds wait);

/// Those whom the host lets in without asking a token or a session for.
struct Trusted {
  LocalRoles users{};                          ///< On the Unix socket.
  std::map<std::string, Role> certificates{};  ///< By the subject of a certificate that we trust.
};

/// Knows clients by the token or session that they show; those who show none, by the user at the other end of
/// the Unix socket, or by their certificate.
class KnownClients final : public IAuthenticator {
 public:
  /// What is referred to outlives this. `takesParameter`: a token may stand in the URL.
  KnownClients(TokenStore& tokens, PassingSecrets& sessions, GuessDelay& delay, Trusted trusted,
               bool takesParameter);

  Identity identify(const Credentials& credentials) const override;
  bool stillHolds(const Identity& identity) const override;

 private:
  Identity identifySecret(std::string_view secret, const Credentials& credentials) const;
  Identity identifyPeer(const Client& client) const;
  std::optional<Identity> findByHash(const std::string& hash) const;

  TokenStore& m_tokens;
  PassingSecrets& m_sessions;
  GuessDelay& m_delay;
  const Trusted m_trusted;
  const bool m_takesParameter;
};

}  // namespace host

#endif
