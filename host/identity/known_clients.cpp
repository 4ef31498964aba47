#include "identity/known_clients.h"

#include <boost/beast/core/string.hpp>
#include <string_view>
#include <utility>

#include "answers/field_list.h"
#include "identity/secrets.h"
#include "identity/token.h"

namespace host {

namespace {

constexpr std::string_view kBearer = "Bearer ";

/// What was shown: empty for a scheme that we do not know, which is as wrong as a wrong token.
std::string_view secretOf(const Credentials& credentials) {
  if (credentials.parameter) return *credentials.parameter;
  const std::string_view field = credentials.authorization;
  if (!boost::beast::iequals(field.substr(0, kBearer.size()), kBearer)) return {};
  return trimmed(field.substr(kBearer.size()));
}

/// Compared in a time that tells nothing of where the two differ.
bool isProven(const ProvenSecret* proven, std::string_view secret) {
  return proven != nullptr && !secret.empty() && sameHash(proven->secret, secret);
}

}  // namespace

Refusal unknownClient(std::chrono::milliseconds wait) {
  Refusal refusal(401, "The request needs a token of this host", {{"WWW-Authenticate", "Bearer"}});
  refusal.wait = wait;
  return refusal;
}

KnownClients::KnownClients(TokenStore& tokens, PassingSecrets& sessions, GuessDelay& delay, Trusted trusted,
                           bool takesParameter)
    : m_tokens(tokens),
      m_sessions(sessions),
      m_delay(delay),
      m_trusted(std::move(trusted)),
      m_takesParameter(takesParameter) {}

Identity KnownClients::identify(const Credentials& credentials) const {
  const bool hasField = !credentials.authorization.empty();
  const bool takesParameter = m_takesParameter && credentials.takesParameter && !hasField;
  if (credentials.parameter && !takesParameter) {
    throw Refusal(400, "The token belongs into the Authorization field alone");
  }
  if (hasField || credentials.parameter) return identifySecret(secretOf(credentials), credentials);
  return identifyPeer(credentials.client);
}

/// Whether the secret still lets anybody in is looked up each time.
Identity KnownClients::identifySecret(std::string_view secret, const Credentials& credentials) const {
  const bool isKnown = isProven(credentials.proven, secret);
  // Only what may be a token is hashed, so that nobody has us work through kilobytes.
  if (isKnown || isToken(secret)) {
    const std::string hash = isKnown ? credentials.proven->hash : sha256Hex(secret);
    if (const auto identity = findByHash(hash)) {
      if (credentials.proven && !isKnown) *credentials.proven = {std::string(secret), hash};
      return *identity;
    }
  }
  throw unknownClient(m_delay.afterWrong(credentials.client.address));
}

Identity KnownClients::identifyPeer(const Client& client) const {
  if (client.localUser) {
    const std::string name = "user:" + std::to_string(client.localUser->userId);
    if (const auto role = m_trusted.users.roleOf(*client.localUser)) return {name, *role};
    throw Refusal(403, "This user of the machine is not let in here");
  }
  if (!client.certificateSubject.empty()) {
    const auto found = m_trusted.certificates.find(client.certificateSubject);
    if (found != m_trusted.certificates.end()) return {"certificate:" + found->first, found->second};
  }
  throw unknownClient(std::chrono::milliseconds(0));
}

std::optional<Identity> KnownClients::findByHash(const std::string& hash) const {
  if (const auto entry = m_tokens.find(hash)) return Identity{entry->name, entry->role, hash};
  auto identity = m_sessions.find(hash);
  if (identity) identity->proof = hash;
  return identity;
}

bool KnownClients::stillHolds(const Identity& identity) const {
  if (identity.proof.empty()) return true;
  const auto now = findByHash(identity.proof);
  return now && now->role >= identity.role;
}

}  // namespace host
