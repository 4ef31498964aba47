#include <process.h>

#include "support/run_program.h"

int runProgram(const std::string& path, const std::vector<std::string>& arguments) {
  // The words are joined with blanks as they are.
  std::vector<std::string> words{'"' + path + '"'};
  for (const std::string& argument : arguments) words.push_back('"' + argument + '"');
  std::vector<const char*> pointers;
  for (const std::string& word : words) pointers.push_back(word.c_str());
  pointers.push_back(nullptr);
  return static_cast<int>(::_spawnvp(_P_WAIT, path.c_str(), pointers.data()));
}
