#ifndef MIRN_HOST_SYSTEM_CHILD_PROCESS_H
#define MIRN_HOST_SYSTEM_CHILD_PROCESS_H

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace host {

/// Other programs that the host runs and waits for; one source a system.

/// A program, and how far it is let go. Plain value, of UTF-8.
struct ChildOrder {
  std::vector<std::string> words;          ///< The program's path and its arguments; no shell reads them.
  std::string input;                       ///< What it finds on its standard input.
  std::vector<std::string> environment{};  ///< "NAME=VALUE"; it has no other.
  std::chrono::milliseconds patience{10'000};
  std::size_t mostOutput = std::size_t{1} << 20;  ///< Bytes; more ends it.
  std::size_t mostErrors = std::size_t{4} << 10;  ///< Bytes; more is thrown away.
  bool isHeard = true;                            ///< Else it may write what it likes, and all is dropped.
  std::string folder{};                           ///< Where it works; empty: where the host does.
};

enum class ChildEnd {
  kExited,   ///< By itself, with `ChildResult::status`.
  kCrashed,  ///< A signal (on Windows an exception) ended it, with its number as status.
  kTooLate,  ///< Its time was over: it was killed.
  kTooMuch,  ///< It wrote more than it may: it was killed.
  kStopped,  ///< The runner was stopped: it was killed, or not begun.
};

struct ChildResult {
  ChildEnd end = ChildEnd::kExited;
  int status = 0;
  std::string output;  ///< Of its standard output.
  std::string errors;  ///< Of its standard error.
};

/// Runs programs until it is stopped. Safe from any thread.
class ChildRunner {
 public:
  ChildRunner();
  ~ChildRunner();
  ChildRunner(const ChildRunner&) = delete;
  ChildRunner& operator=(const ChildRunner&) = delete;

  /// Runs the program to its end, which takes a thread as long as that takes. Of the host nothing is open in
  /// it but the three streams, and nothing that it has begun (under POSIX: in its process group) outlives the
  /// call. Raises `std::runtime_error` with the reason when it cannot be started.
  ChildResult run(const ChildOrder& order) const;

  /// Programs that run are ended, and none is begun any more.
  void stop();

 private:
  class Stop;
  const std::unique_ptr<Stop> m_stop;
};

/// What a program needs at least to find others: PATH, and on Windows SystemRoot.
std::vector<std::string> plainEnvironment();

/// Whether this system would run the file at `path`.
bool isProgram(const std::string& path);

/// The path of a program that belongs to the host: beside its own, or in the folder of its libraries. Empty
/// where there is none.
std::string helperProgram(const std::string& name);

}  // namespace host

#endif
