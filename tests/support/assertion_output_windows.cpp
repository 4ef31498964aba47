#include "support/assertion_output.h"

std::vector<std::string> partsOfFailedAssertion(const std::string& text, const std::string& path,
                                                unsigned line) {
  return {"Assertion failed: " + text + ", file " + path + ", line " +
          (line == 0 ? "" : std::to_string(line) + "\n")};
}
