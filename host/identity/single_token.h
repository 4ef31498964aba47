#ifndef MIRN_HOST_IDENTITY_SINGLE_TOKEN_H
#define MIRN_HOST_IDENTITY_SINGLE_TOKEN_H

#include <string>
#include <utility>

#include "identity/authenticator.h"

namespace host {

/// Everyone who shows the one token may do everything.
class SingleToken final : public IAuthenticator {
 public:
  explicit SingleToken(std::string token) : m_token(std::move(token)) {}

  Identity identify(const Credentials& credentials) const override;
  bool stillHolds(const Identity&) const override { return true; }

 private:
  const std::string m_token;
};

}  // namespace host

#endif
