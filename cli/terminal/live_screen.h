#ifndef MIRN_CLI_TERMINAL_LIVE_SCREEN_H
#define MIRN_CLI_TERMINAL_LIVE_SCREEN_H

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace mirnctl {

/// The whole terminal for as long as it lives; then it is as it was before. One at a time, since signals come
/// to the process; for one thread.
class LiveScreen {
 public:
  enum class Wish { kNothing, kRedraw, kEnd };
  struct Size {
    std::size_t width = 0, height = 0;  ///< In cells.
  };

  LiveScreen();
  LiveScreen(const LiveScreen&) = delete;
  LiveScreen& operator=(const LiveScreen&) = delete;
  ~LiveScreen();

  Size size() const;

  /// In the place of what was shown. Each line has room, and there are no more of them than the screen has.
  void show(const std::vector<std::string>& lines);

  /// Waits until somebody ends the program (q, Ctrl-C, a signal) or the terminal has another size, and for so
  /// long at most.
  Wish await(std::chrono::milliseconds time);

 private:
  class Process;
  std::unique_ptr<Process> m_process;
};

}  // namespace mirnctl

#endif
