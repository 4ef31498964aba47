#ifndef MIRN_HOST_IDENTITY_IDENTITY_H
#define MIRN_HOST_IDENTITY_IDENTITY_H

#include <string>

#include "identity/role.h"

namespace host {

/// Somebody whom the host knows.
struct Identity {
  std::string name;  ///< Of the token, the session, the user or the certificate; for logs.
  Role role = Role::kObserve;
  std::string proof{};  ///< Hash of what was shown; empty where the system or a certificate names the client.
};

}  // namespace host

#endif
