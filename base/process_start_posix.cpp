#include <cstdlib>

#include "process_start.h"

std::vector<std::string> programArguments(int argc, const char* const* argv) {
  if (argc == 0) return {};
  return {argv + 1, argv + argc};
}

std::optional<std::string> environmentVariable(const std::string& name) {
  const char* const value = std::getenv(name.c_str());
  if (value == nullptr || *value == '\0') return {};
  return value;
}
