#ifndef MIRN_HOST_NOTIFICATIONS_COMMAND_RUNNER_H
#define MIRN_HOST_NOTIFICATIONS_COMMAND_RUNNER_H

#include <chrono>
#include <string>
#include <vector>

#include "system/child_process.h"

namespace host {

/// Runs a program as commands of notifications are: its folder is the root, its environment a plain one, and
/// its output is dropped.
class CommandRunner {
 public:
  /// Runs `words`, the first of which is the program's absolute path, and gives it `input`. Comes back at its
  /// end, which is brought about after `patience`: empty where its status is 0, else what went wrong. Safe
  /// from any thread.
  std::string run(const std::vector<std::string>& words, const std::string& input,
                  std::chrono::milliseconds patience) const;

  /// From any thread: a program that runs is ended, and none is begun any more.
  void stop() { m_runner.stop(); }

 private:
  ChildRunner m_runner;
};

}  // namespace host

#endif
