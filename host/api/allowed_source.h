#ifndef MIRN_HOST_API_ALLOWED_SOURCE_H
#define MIRN_HOST_API_ALLOWED_SOURCE_H

#include <memory>

#include "answers/answer_parts.h"
#include "api/endpoint.h"

namespace host {

/// `source` for as long as the client of `call` is let in: it raises a `Refusal` 401 once the token has been
/// revoked or may less, or the session has ended.
std::unique_ptr<AnswerSource> whileAllowed(std::shared_ptr<const Call> call,
                                           std::unique_ptr<AnswerSource> source);

}  // namespace host

#endif
