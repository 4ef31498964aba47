#ifndef MIRN_HOST_IDENTITY_AUTHENTICATOR_H
#define MIRN_HOST_IDENTITY_AUTHENTICATOR_H

#include <optional>
#include <string>

#include "identity/client.h"
#include "identity/identity.h"

namespace host {

/// What a connection showed last and was let in by, so that the same, request after request, is hashed once.
/// Belongs to the connection.
struct ProvenSecret {
  std::string secret{};
  std::string hash{};
};

/// What a request shows of who sends it.
struct Credentials {
  std::string authorization;             ///< The header field; empty when it is missing.
  std::optional<std::string> parameter;  ///< `access_token` of the query, UTF-8.
  bool takesParameter = true;            ///< Whether the address takes the parameter at all.
  Client client{};
  ProvenSecret* proven = nullptr;  ///< Null where nothing is remembered.
};

/// Knows people by what their requests show. Safe from any thread; never waits.
class IAuthenticator {
 public:
  virtual ~IAuthenticator() = default;

  /// Raises a `Refusal`: 401 on somebody unknown, whose `wait` is to pass before it is told; 400 on
  /// credentials that contradict each other or are not taken.
  virtual Identity identify(const Credentials& credentials) const = 0;

  /// Whether somebody who was identified may go on: false when the token has been revoked or may less now, or
  /// the session has ended. For whatever outlasts a request, such as a stream.
  virtual bool stillHolds(const Identity& identity) const = 0;
};

}  // namespace host

#endif
