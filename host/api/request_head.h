#ifndef MIRN_HOST_API_REQUEST_HEAD_H
#define MIRN_HOST_API_REQUEST_HEAD_H

#include <string>

#include "answers/answer_wishes.h"
#include "identity/authenticator.h"
#include "identity/client.h"

namespace host {

/// What is known of a request when its header is read.
struct RequestHead {
  std::string method;
  std::string target;         ///< An absolute path with its query, or "*".
  std::string authorization;  ///< Empty when the field is missing.
  std::string contentType;    ///< Empty when the field is missing.
  bool hasBody = false;
  Client client{};
  AnswerWishes wishes{};
  ProvenSecret* proven = nullptr;  ///< Of the connection; null where there is none.
};

}  // namespace host

#endif
