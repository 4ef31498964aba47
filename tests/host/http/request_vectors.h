#ifndef MIRN_TESTS_HOST_HTTP_REQUEST_VECTORS_H
#define MIRN_TESTS_HOST_HTTP_REQUEST_VECTORS_H

#include <string>
#include <vector>

namespace host {

/// What a client sends, and what has to come of it.
struct RequestVector {
  std::string name;
  std::string bytes;              ///< "TOKEN" stands for the token.
  std::vector<unsigned> answers;  ///< The statuses of all answers, in order.
  bool stays;  ///< The connection takes a further request afterwards; otherwise it is closed.
  int calls;   ///< Of the plug-in.
};

/// Requests as they may come, and as they may not.
const std::vector<RequestVector>& requestVectors();

}  // namespace host

#endif
