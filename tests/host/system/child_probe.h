#ifndef MIRN_TESTS_HOST_SYSTEM_CHILD_PROBE_H
#define MIRN_TESTS_HOST_SYSTEM_CHILD_PROBE_H

#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// The words by which the program of child_probe.cpp does something.
inline std::vector<std::string> probe(std::vector<std::string> words) {
  static const std::string program =
      std::filesystem::absolute(std::filesystem::u8path(MIRN_CHILD_PROBE)).make_preferred().u8string();
  words.insert(words.begin(), program);
  return words;
}

}  // namespace host

#endif
