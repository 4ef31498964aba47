#ifndef MIRN_TESTS_SUPPORT_ASSERTION_OUTPUT_H
#define MIRN_TESTS_SUPPORT_ASSERTION_OUTPUT_H

#include <gmock/gmock.h>

#include <string>
#include <vector>

/// What this system's output holds when an assertion with this text fails at this path; at any line for 0.
std::vector<std::string> partsOfFailedAssertion(const std::string& text, const std::string& path,
                                                unsigned line);

/// Matches the output of a process that ended by that assertion.
inline testing::Matcher<const std::string&> failedAssertion(const std::string& text, const std::string& path,
                                                            unsigned line = 0) {
  std::vector<testing::Matcher<const std::string&>> parts;
  for (const std::string& part : partsOfFailedAssertion(text, path, line)) {
    parts.push_back(testing::HasSubstr(part));
  }
  return testing::AllOfArray(parts);
}

#endif
