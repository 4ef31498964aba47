#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/run_program.h"

int runProgram(const std::string& path, const std::vector<std::string>& arguments) {
  std::vector<std::string> words{path};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(&word[0]);
  pointers.push_back(nullptr);
  pid_t process = 0;
  int status = 0;
  if (::posix_spawnp(&process, path.c_str(), nullptr, nullptr, pointers.data(), environ) != 0) return -1;
  if (::waitpid(process, &status, 0) != process) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
