#ifndef MIRN_TESTS_HOST_SERVICE_OUTPUT_READER_H
#define MIRN_TESTS_HOST_SERVICE_OUTPUT_READER_H

#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace host {

/// Takes in all that a process writes to a pipe, so that the process never waits for a reader.
class OutputReader {
 public:
  /// Owns `descriptor`, the pipe's reading end.
  explicit OutputReader(int descriptor);
  OutputReader(const OutputReader&) = delete;
  OutputReader& operator=(const OutputReader&) = delete;
  ~OutputReader();

  /// Waits for the first whole line that starts with `start`, and gives what follows in it. Nothing when the
  /// output ends without.
  std::optional<std::string> awaitLine(const std::string& start);

  /// Waits for the end, and gives everything.
  std::string all();

 private:
  void readToEnd();
  std::optional<std::string> find(const std::string& start) const;

  const int m_descriptor;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::string m_text;
  bool m_ended = false;
  std::thread m_thread;
};

}  // namespace host

#endif
