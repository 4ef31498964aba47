#ifndef MIRN_HOST_ANSWERS_PROBLEM_H
#define MIRN_HOST_ANSWERS_PROBLEM_H

#include <exception>
#include <string>

#include "answers/refusal_kinds.h"

namespace host {

/// A failed request as its client sees it (RFC 9457).
struct Problem {
  unsigned status;
  std::string detail;   ///< UTF-8.
  std::string errorId;  ///< Empty when the failure has none.
};

/// Reads the status of an `HttpClientErrorException`, else the kind that `kinds` tells for the id and the
/// words of an `IErrorIdException`. A failure with neither, and one with a status that is no failure's (400
/// to 599), is a 500. A detail that would go beyond 4 KiB, as where it repeats what a client sent, is cut.
Problem problemOf(const std::exception& failure, const RefusalKinds& kinds = {});

/// The status by which clients see a refusal of this kind.
unsigned statusOf(RefusalKind kind);

/// The document as JSON: `type`, `title`, `status`, `detail`, and `errorId` where there is one.
std::string problemDocument(const Problem& problem);

}  // namespace host

#endif
