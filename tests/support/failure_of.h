#ifndef MIRN_TESTS_SUPPORT_FAILURE_OF_H
#define MIRN_TESTS_SUPPORT_FAILURE_OF_H

#include <ostream>
#include <string>

#include "mirn_exception.h"

/// What a `MirnException` says; both texts are empty when there was none.
struct Failure {
  std::string errorId;
  std::string text;
};

inline bool operator==(const Failure& a, const Failure& b) {
  return a.errorId == b.errorId && a.text == b.text;
}

inline std::ostream& operator<<(std::ostream& stream, const Failure& failure) {
  return stream << '"' << failure.errorId << "\", \"" << failure.text << '"';
}

const Failure kNoFailure = {};
const Failure kLockTimeout = {"Mirn_OPERATION_FAILED", "Timeout on access to protected resource"};

/// Runs `action` and tells what it raised. Other exceptions pass through.
template <class Action>
Failure failureOf(Action action) {
  try {
    action();
  } catch (const MirnException& failure) {
    return {failure.getErrorId(), failure.what()};
  }
  return kNoFailure;
}

#endif
