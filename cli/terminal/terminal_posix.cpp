#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <optional>

#include "terminal/terminal.h"

namespace mirnctl {

namespace {

constexpr std::size_t kUsualWidth = 80;

std::size_t widthOfOutput() {
  winsize size{};
  const bool isKnown = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? size.ws_col : kUsualWidth;
}

bool wantsColours() {
  const char* const without = std::getenv("NO_COLOR");
  const char* const kind = std::getenv("TERM");
  const bool isDumb = kind == nullptr || std::string(kind) == "dumb";
  return (without == nullptr || *without == '\0') && !isDumb;
}

void showTyping(bool isShown) {
  static std::optional<termios> usual;
  if (isShown) {
    if (usual) ::tcsetattr(STDIN_FILENO, TCSANOW, &*usual);
    return;
  }
  termios hidden{};
  if (::tcgetattr(STDIN_FILENO, &hidden) != 0) return;
  usual = hidden;
  hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
  hidden.c_cc[VEOL] = '\x03';
  ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
}

}  // namespace

Terminal processTerminal() {
  Terminal terminal{std::cin, std::cout, std::cerr};
  if (::isatty(STDOUT_FILENO) != 0) terminal.screen = {widthOfOutput(), wantsColours()};
  terminal.showsProgress = ::isatty(STDERR_FILENO) != 0;
  terminal.asksPeople = terminal.showsProgress && ::isatty(STDIN_FILENO) != 0;
  terminal.showTyping = showTyping;
  return terminal;
}

}  // namespace mirnctl
