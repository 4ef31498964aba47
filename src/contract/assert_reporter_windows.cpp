#include "assert_reporter.h"

#include <cassert>
#include <cstdlib>

void reportFailedAssertion(const char* text, const char* path, unsigned line) {
  ::_assert(text, path, line);
  std::abort();  // where the runtime offers to ignore a failed assertion
}
