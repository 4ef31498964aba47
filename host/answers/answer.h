#ifndef MIRN_HOST_ANSWERS_ANSWER_H
#define MIRN_HOST_ANSWERS_ANSWER_H

#include <chrono>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "answers/body.h"
#include "answers/refusal_kinds.h"
#include "service_exceptions.h"

namespace host {

/// Names and values of HTTP header fields.
using Headers = std::vector<std::pair<std::string, std::string>>;

/// What a request is answered with, whatever carries it. An empty body has no content type.
struct Answer {
  unsigned status = 200;
  std::string contentType;
  Body body{};
  Headers headers;
  std::string rendered{};  ///< What `answerFields` tells of it, for one that goes out often; else empty.
  bool isInParts = false;  ///< Its body comes behind it, as long as it may be; `body` is empty.
};

/// The host's own refusal of a request, with the header fields that its status asks for.
class Refusal : public ovra::common::HttpClientErrorException {
 public:
  Refusal(std::int32_t httpStatus, const std::string& message, Headers refusalHeaders = {})
      : HttpClientErrorException(httpStatus, message), headers(std::move(refusalHeaders)) {}

  Headers headers;
  std::chrono::milliseconds wait{0};  ///< It is told no sooner than after this time, which costs no thread.
};

/// `json` as a 200.
Answer jsonAnswer(std::string json);

/// The value as a 200; the null value as a 204.
Answer valueAnswer(const ovra::data_transfer::ServiceObject& value);

/// The problem document of `failure`, with the header fields of a `Refusal`; one that passes (503) says when
/// to try again. `kinds` tell what an error id and its words mean.
Answer failureAnswer(const std::exception& failure, const RefusalKinds& kinds = {});

}  // namespace host

#endif
