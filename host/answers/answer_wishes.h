#ifndef MIRN_HOST_ANSWERS_ANSWER_WISHES_H
#define MIRN_HOST_ANSWERS_ANSWER_WISHES_H

#include <optional>
#include <string>

namespace host {

/// What a request's header says of the answer that it wants. Each is the value of its field, those of several
/// lines joined by commas; nothing where there is none.
struct AnswerWishes {
  std::optional<std::string> acceptEncoding;
  std::optional<std::string> ifMatch;
  std::optional<std::string> ifNoneMatch;
  std::optional<std::string> prefer;
  std::optional<std::string> lastEventId{};
};

}  // namespace host

#endif
