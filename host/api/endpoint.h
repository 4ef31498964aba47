#ifndef MIRN_HOST_API_ENDPOINT_H
#define MIRN_HOST_API_ENDPOINT_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "answers/answer.h"
#include "api/job.h"
#include "api/request_target.h"
#include "identity/client.h"
#include "identity/identity.h"

namespace host {

/// A request that has come to its endpoint.
struct Call {
  RequestTarget target;  ///< Without the token.
  Identity identity;     ///< Without a name where nobody needs to be known.
  Client client{};       ///< Where it comes from.
};

/// One operation of the service. Plain value.
struct ApiEndpoint {
  std::string operation;     ///< Its id, such as "listVolumes".
  std::string method;        ///< "GET", "POST", "PUT" or "DELETE".
  std::wstring path;         ///< A `PathTemplate`.
  std::optional<Role> role;  ///< At least needed; nothing: anybody may, without a token.
  Lane lane = Lane::kOwn;
  bool isChange = false;  ///< It belongs into the audit.
  /// Members of the body that name objects, for the audit.
  std::vector<std::wstring> references{};
  /// The token may stand in the URL.
  bool takesTokenParameter = true;

  /// Answers a call with its body. Safe from any thread. A failure leaves as an exception.
  std::function<Answer(const Call& call, const std::string& body)> handle{};
};

}  // namespace host

#endif
