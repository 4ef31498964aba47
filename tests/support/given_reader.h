#ifndef MIRN_TESTS_SUPPORT_GIVEN_READER_H
#define MIRN_TESTS_SUPPORT_GIVEN_READER_H

#include <string>
#include <vector>

#include "mirn_snapshot.h"

/// Stands in for the reader of the library in a test program that links its source: what it reads is what
/// the test has given. So a picture can hold what no library reports.
struct GivenReader {
  static MirnSnapshot picture;
  /// What was asked for, in order, such as `getArrays(0, 0, "")`.
  static std::vector<std::string> asked;
};

#endif
