#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <atomic>
#include <cstdio>
#include <iostream>

#include "process_start.h"
#include "terminal/console_windows.h"
#include "terminal/terminal.h"

namespace mirnctl {

namespace {

constexpr std::size_t kUsualWidth = 80;
constexpr std::size_t kBuffered = 16 * 1024;

/// A character goes to the console whole, and lines end as on other systems.
void writeInPieces(std::FILE* file) {
  ::_setmode(::_fileno(file), _O_BINARY);
  std::setvbuf(file, nullptr, _IOFBF, kBuffered);
}

/// Of the console, while what is typed is hidden.
std::atomic<DWORD> usualMode{0};

void showAgain() {
  if (const DWORD mode = usualMode.exchange(0)) ::SetConsoleMode(::GetStdHandle(STD_INPUT_HANDLE), mode);
}

/// The process then ends as it would have.
BOOL WINAPI showAtTheEnd(DWORD) {
  showAgain();
  return FALSE;
}

void showTyping(bool isShown) {
  if (isShown) {
    showAgain();
    ::SetConsoleCtrlHandler(showAtTheEnd, FALSE);
    return;
  }
  const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode = 0;
  if (!::GetConsoleMode(input, &mode)) return;
  usualMode = mode;
  ::SetConsoleCtrlHandler(showAtTheEnd, TRUE);
  ::SetConsoleMode(input, mode & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
}

}  // namespace

Terminal processTerminal() {
  static const Utf8Console utf8;
  static const ConsoleModes modes(::GetStdHandle(STD_OUTPUT_HANDLE), 0, ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  writeInPieces(stdout);
  writeInPieces(stderr);
  Terminal terminal{std::cin, std::cout, std::cerr};
  if (modes.isConsole()) {
    const std::size_t width = consoleSize().width;
    const bool wantsColours = modes.isTaken() && !environmentVariable("NO_COLOR");
    terminal.screen = {width > 0 ? width : kUsualWidth, wantsColours};
  }
  terminal.showsProgress = isConsole(STD_ERROR_HANDLE);
  terminal.asksPeople = terminal.showsProgress && isConsole(STD_INPUT_HANDLE);
  terminal.showTyping = showTyping;
  return terminal;
}

}  // namespace mirnctl
