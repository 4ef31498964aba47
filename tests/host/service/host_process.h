#ifndef MIRN_TESTS_HOST_SERVICE_HOST_PROCESS_H
#define MIRN_TESTS_HOST_SERVICE_HOST_PROCESS_H

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/service/output_reader.h"

namespace host {

/// A running `mirn-host`. Killed by the destructor when it still runs.
///
///   HostProcess host({"--module", module, "--port", "0", "--token-file", file},
///                    {{"VEXL2_SCENARIO", scenario}});
///   ASSERT_TRUE(host.awaitServing()) << host.errors();
///   HttpConnection(host.port()).get("/api/v1/mirn/volumes", host.token());
///   EXPECT_EQ(host.stop(), 0);
class HostProcess {
 public:
  /// `arguments` stand behind the program's name; `environment` adds to the one of this process.
  explicit HostProcess(const std::vector<std::string>& arguments,
                       const std::map<std::string, std::string>& environment = {});
  HostProcess(const HostProcess&) = delete;
  HostProcess& operator=(const HostProcess&) = delete;
  ~HostProcess();

  /// Waits until the host has told its port and token; false when it ended instead.
  bool awaitServing();
  pid_t processId() const { return m_pid; }
  std::uint16_t port() const { return m_port; }
  const std::string& token() const { return m_token; }

  void signal(int number) const;
  bool hasExited() const { return m_exit.has_value(); }

  /// The exit status, or minus the signal that ended the process.
  int awaitExit();

  /// SIGTERM unless it has exited, then as `awaitExit`.
  int stop();

  /// What the host wrote to standard output and standard error, from its start to its end, which
  /// they wait for.
  std::string output() { return m_output->all(); }
  std::string errors() { return m_errors->all(); }

  /// Waits for a line of standard error that starts with `start`; false when the host ended without.
  bool awaitError(const std::string& start) { return m_errors->awaitLine(start).has_value(); }

 private:
  const std::string m_module;
  std::optional<int> m_exit;
  pid_t m_pid = -1;
  std::unique_ptr<OutputReader> m_output;
  std::unique_ptr<OutputReader> m_errors;
  std::uint16_t m_port = 0;
  std::string m_token;
};

}  // namespace host

#endif
