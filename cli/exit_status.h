#ifndef MIRN_CLI_EXIT_STATUS_H
#define MIRN_CLI_EXIT_STATUS_H

#include <array>
#include <stdexcept>
#include <string>

namespace mirnctl {

/// What the program ends with.
enum class ExitStatus {
  kDone = 0,
  kRefused = 1,
  kUsage = 2,
  kNotFound = 3,
  kConflict = 4,
  kUnreachable = 5,
  kUnauthorised = 6,
  kJobFailed = 7,
  kInternal = 8,
};

/// A status in words, for help and manual.
struct ExitStatusRow {
  ExitStatus status;
  const char* meaning;
};

inline constexpr std::array<ExitStatusRow, 9> kExitStatuses{{
    {ExitStatus::kDone, "done"},
    {ExitStatus::kRefused, "refused: by the service's rules, or by the one who was asked"},
    {ExitStatus::kUsage, "usage: the command line or a file of settings is wrong"},
    {ExitStatus::kNotFound, "not found: no such object, or no such operation there"},
    {ExitStatus::kConflict, "conflict: not in this state, or the machine has changed meanwhile"},
    {ExitStatus::kUnreachable, "unreachable: no answer, or the service cannot serve now"},
    {ExitStatus::kUnauthorised, "unauthorised: no token, a wrong one, or one of too low a role"},
    {ExitStatus::kJobFailed, "job failed: the change was made, and the work that it began failed"},
    {ExitStatus::kInternal, "internal: the service or this program failed"},
}};

/// Of an answer that is no success.
ExitStatus exitStatusOf(unsigned httpStatus);

/// What ends the program, told on standard error.
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& text, std::string advice = {})
      : std::runtime_error(text), m_status(status), m_advice(std::move(advice)) {}

  ExitStatus status() const { return m_status; }
  /// What to do about it; empty where nobody knows.
  const std::string& advice() const { return m_advice; }

 private:
  ExitStatus m_status;
  std::string m_advice;
};

}  // namespace mirnctl

#endif
