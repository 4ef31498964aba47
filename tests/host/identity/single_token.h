#ifndef MIRN_TESTS_HOST_IDENTITY_SINGLE_TOKEN_H
#define MIRN_TESTS_HOST_IDENTITY_SINGLE_TOKEN_H

#include <string>
#include <utility>

#include "answers/answer.h"
#include "identity/authenticator.h"

namespace host {

/// Everyone who shows the one token, in the field or in the URL, may do everything.
class SingleToken final : public IAuthenticator {
 public:
  explicit SingleToken(std::string token) : m_token(std::move(token)) {}

  Identity identify(const Credentials& credentials) const override {
    if (credentials.authorization == "Bearer " + m_token || credentials.parameter == m_token) {
      return {"first", Role::kAdminister};
    }
    throw Refusal(401, "The request needs the token of this host", {{"WWW-Authenticate", "Bearer"}});
  }
  bool stillHolds(const Identity&) const override { return true; }

 private:
  const std::string m_token;
};

}  // namespace host

#endif
