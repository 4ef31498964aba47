#include "terminal/console_windows.h"

#include <cstdio>

namespace mirnctl {

bool isConsole(DWORD stream) {
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(stream), &mode) != 0;
}

LiveScreen::Size consoleSize() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (!::GetConsoleScreenBufferInfo(::GetStdHandle(STD_OUTPUT_HANDLE), &info)) return {};
  const SMALL_RECT& seen = info.srWindow;
  return {static_cast<std::size_t>(seen.Right - seen.Left + 1),
          static_cast<std::size_t>(seen.Bottom - seen.Top + 1)};
}

ConsoleModes::ConsoleModes(HANDLE stream, DWORD without, DWORD with)
    : m_stream(stream),
      m_isConsole(::GetConsoleMode(stream, &m_former) != 0),
      m_isTaken(m_isConsole && ::SetConsoleMode(stream, (m_former & ~without) | with) != 0) {}

ConsoleModes::~ConsoleModes() {
  if (m_isTaken) ::SetConsoleMode(m_stream, m_former);
}

Utf8Console::Utf8Console() : m_former(::GetConsoleOutputCP()) {
  if (m_former != 0) ::SetConsoleOutputCP(CP_UTF8);
}

/// What the program still holds goes out first.
Utf8Console::~Utf8Console() {
  std::fflush(nullptr);
  if (m_former != 0) ::SetConsoleOutputCP(m_former);
}

}  // namespace mirnctl
