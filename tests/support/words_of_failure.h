#ifndef MIRN_TESTS_SUPPORT_WORDS_OF_FAILURE_H
#define MIRN_TESTS_SUPPORT_WORDS_OF_FAILURE_H

#include <string>

/// What the `Error` says that `action` raises; "no refusal" when it raises nothing. Others pass through.
template <class Error, class Action>
std::string wordsOfFailure(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error.what();
  }
  return "no refusal";
}

#endif
