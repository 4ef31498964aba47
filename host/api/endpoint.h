#ifndef MIRN_HOST_API_ENDPOINT_H
#define MIRN_HOST_API_ENDPOINT_H

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "answers/answer.h"
#include "answers/answer_wishes.h"
#include "api/endpoint_document.h"
#include "api/job.h"
#include "api/request_target.h"
#include "identity/authenticator.h"
#include "identity/client.h"
#include "identity/identity.h"

namespace host {

/// A request that has come to its endpoint.
struct Call {
  RequestTarget target;  ///< Without the token.
  Identity identity;     ///< Without a name where nobody needs to be known.
  Client client{};       ///< Where it comes from.
  AnswerWishes wishes{};
  const IAuthenticator* authenticator = nullptr;  ///< Who lets the client in; null where nobody does.
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
  /// Of the host's own; a plug-in tells of its operations itself.
  std::optional<EndpointDocument> document{};

  /// Answers a call with its body. Safe from any thread. A failure leaves as an exception.
  std::function<Answer(const Call& call, const std::string& body)> handle{};

  /// Instead, where it is there: as `Job::begin`.
  std::function<void(std::shared_ptr<const Call> call, const std::shared_ptr<Exchange>& exchange,
                     std::string body)>
      begin{};

  /// The parameter "dryRun" is taken off, and asks what `handle` would do.
  bool takesDryRun = false;

  /// Tells it and does nothing; empty where nobody can.
  std::function<Answer(const Call& call, const std::string& body)> rehearse{};
  const std::string* planSchema = nullptr;  ///< As `ChangePlans::schema`.
};

}  // namespace host

#endif
