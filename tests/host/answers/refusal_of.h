#ifndef MIRN_TESTS_HOST_ANSWERS_REFUSAL_OF_H
#define MIRN_TESTS_HOST_ANSWERS_REFUSAL_OF_H

#include <optional>

#include "answers/answer.h"

namespace host {

/// What `action` is refused with; nothing when it is taken. Other exceptions pass through.
template <class Action>
std::optional<Refusal> refusalOf(Action action) {
  try {
    action();
  } catch (const Refusal& refusal) {
    return refusal;
  }
  return {};
}

}  // namespace host

#endif
