#ifndef MIRN_HOST_API_JOB_H
#define MIRN_HOST_API_JOB_H

#include <functional>
#include <memory>
#include <string>

#include "answers/answer.h"
#include "api/exchange.h"
#include "api/lane.h"

namespace host {

/// The rest of a request whose header was taken.
struct Job {
  Lane lane = Lane::kOwn;
  std::string identity;   ///< Who asks, for logs and shares; empty where nobody needs to be known.
  std::string operation;  ///< What is asked, by its id, for logs; empty where it has none.
  bool isChange = false;  ///< It belongs into the audit.

  /// Answers the request with its body, on a thread of the lane. A failure leaves as an exception.
  std::function<Answer(const std::string& body)> run{};

  /// Instead, where it is there: begins to answer by the exchange, on its strand, and comes back at once.
  std::function<void(const std::shared_ptr<Exchange>& exchange, std::string body)> begin{};
};

}  // namespace host

#endif
