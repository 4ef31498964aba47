#ifndef MIRN_HOST_HTTP_REQUEST_H
#define MIRN_HOST_HTTP_REQUEST_H

#include <string>

#include "answers/answer_wishes.h"

namespace host {

/// What a request's header says, as far as the host goes by it.
struct Request {
  std::string method;
  std::string target;  ///< An absolute path with its query, or "*"; never with a scheme and host.
  std::string authorization;
  std::string contentType;
  unsigned version = 11;         ///< 10 or 11.
  bool keepsConnection = false;  ///< The client means to send another one.
  bool hasBody = false;
  bool awaitsContinue = false;  ///< The client sends its body once it is told to.
  AnswerWishes wishes{};
};

/// Where a request came in.
struct Destination {
  std::string address;       ///< Of this machine, as text; empty where there is none.
  bool isEncrypted = false;  ///< Over TLS.
};

}  // namespace host

#endif
