#include "host/service/host_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <regex>
#include <system_error>

#include "support/exchange_record.h"

extern char** environ;  // NOLINT(readability-identifier-naming)

namespace host {

namespace {

void require(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

/// A pipe whose ends no other process inherits.
struct Pipe {
  Pipe() { require(pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno, "pipe2"); }

  std::array<int, 2> ends{};
};

/// Texts as the null-terminated list of pointers that the system wants.
std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts) result.push_back(&text[0]);
  result.push_back(nullptr);
  return result;
}

std::vector<std::string> withThisEnvironment(const std::map<std::string, std::string>& more) {
  std::vector<std::string> result;
  for (const auto& [name, value] : more) result.push_back(name + "=" + value);
  for (char** entry = environ; *entry; ++entry) {
    const std::string text = *entry;
    if (more.count(text.substr(0, text.find('='))) == 0) result.push_back(text);
  }
  return result;
}

/// What stands behind "--module".
std::string moduleIn(const std::vector<std::string>& arguments) {
  const auto name = std::find(arguments.begin(), arguments.end(), "--module");
  return name == arguments.end() || name + 1 == arguments.end() ? std::string() : *(name + 1);
}

}  // namespace

HostProcess::HostProcess(const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment)
    : m_module(moduleIn(arguments)) {
  std::vector<std::string> words{MIRN_HOST_PROGRAM};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<std::string> variables = withThisEnvironment(environment);
  const Pipe output;
  const Pipe errors;
  posix_spawn_file_actions_t actions;
  require(posix_spawn_file_actions_init(&actions), "posix_spawn_file_actions_init");
  require(posix_spawn_file_actions_adddup2(&actions, output.ends[1], STDOUT_FILENO), "stdout");
  require(posix_spawn_file_actions_adddup2(&actions, errors.ends[1], STDERR_FILENO), "stderr");
  require(posix_spawn(&m_pid, MIRN_HOST_PROGRAM, &actions, nullptr, pointers(words).data(),
                      pointers(variables).data()),
          MIRN_HOST_PROGRAM);
  posix_spawn_file_actions_destroy(&actions);
  close(output.ends[1]);
  close(errors.ends[1]);
  m_output = std::make_unique<OutputReader>(output.ends[0]);
  m_errors = std::make_unique<OutputReader>(errors.ends[0]);
}

HostProcess::~HostProcess() {
  if (m_exit) return;
  signal(SIGKILL);
  awaitExit();
}

bool HostProcess::awaitServing() {
  const auto serving = m_output->awaitLine("Serving ");
  const auto tokenFile = m_output->awaitLine("Token file: ");
  if (!serving || !tokenFile) return false;
  static const std::regex kPattern(R"(.*://.*:(\d+))");
  std::smatch found;
  if (!std::regex_match(*serving, found, kPattern)) return false;
  m_port = static_cast<std::uint16_t>(std::stoi(found[1]));
  std::getline(std::ifstream(*tokenFile), m_token);
  exchange_record::addHost(m_port, m_module);
  return true;
}

void HostProcess::signal(int number) const { kill(m_pid, number); }

int HostProcess::awaitExit() {
  if (m_exit) return *m_exit;
  int status = 0;
  while (waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
  }
  m_exit = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return *m_exit;
}

int HostProcess::stop() {
  if (!m_exit) signal(SIGTERM);
  return awaitExit();
}

}  // namespace host
