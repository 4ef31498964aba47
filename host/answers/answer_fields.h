#ifndef MIRN_HOST_ANSWERS_ANSWER_FIELDS_H
#define MIRN_HOST_ANSWERS_ANSWER_FIELDS_H

#include <string>

#include "answers/answer.h"

namespace host {

/// The header fields of `answer` that do not depend on who asks and when, each line with its end: its own and
/// what every answer has; the length is that of its body, and is not told of one in parts.
std::string answerFields(const Answer& answer);

/// `answer`, with them at hand.
Answer rendered(Answer answer);

}  // namespace host

#endif
