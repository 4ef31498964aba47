#ifndef MIRN_HOST_API_JOB_H
#define MIRN_HOST_API_JOB_H

#include <functional>
#include <string>

#include "answers/answer.h"

namespace host {

/// Which threads a request takes, so that none of these keeps the others from being answered.
enum class Lane {
  kOwn,      ///< The host's own answers, which wait for nobody.
  kReads,    ///< Calls of the plug-in that change nothing.
  kChanges,  ///< Calls of the plug-in that change something; they may take long.
};

/// The rest of a request whose header was taken.
struct Job {
  Lane lane = Lane::kOwn;
  std::string identity;   ///< Who asks, for logs and shares; empty where nobody needs to be known.
  std::string operation;  ///< What is asked, by its id, for logs; empty where it has none.
  bool isChange = false;  ///< It belongs into the audit.

  /// Answers the request with its body, on a thread of the lane. A failure leaves as an exception.
  std::function<Answer(const std::string& body)> run;
};

}  // namespace host

#endif
