#include "identity/single_token.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <string_view>

#include "answers/answer.h"
#include "identity/token.h"

namespace host {

namespace {

constexpr std::string_view kBearer = "Bearer ";

std::string shownToken(const Credentials& credentials) {
  if (credentials.authorization.empty()) return credentials.parameter.value_or("");
  if (!boost::algorithm::istarts_with(credentials.authorization, kBearer)) return {};
  return boost::algorithm::trim_copy(credentials.authorization.substr(kBearer.size()));
}

}  // namespace

Identity SingleToken::identify(const Credentials& credentials) const {
  if (credentials.parameter && (!credentials.authorization.empty() || !credentials.takesParameter)) {
    throw Refusal(400, "The token belongs into the Authorization field alone");
  }
  if (sameToken(shownToken(credentials), m_token)) return {"first", Role::kAdminister};
  throw Refusal(401, "The request needs the token of this host", {{"WWW-Authenticate", "Bearer"}});
}

}  // namespace host
