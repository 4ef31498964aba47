#ifndef MIRN_CLI_TERMINAL_CONSOLE_WINDOWS_H
#define MIRN_CLI_TERMINAL_CONSOLE_WINDOWS_H

#include <windows.h>

#include "terminal/live_screen.h"

namespace mirnctl {

/// Whether that stream of the process, such as `STD_OUTPUT_HANDLE`, is a console.
bool isConsole(DWORD stream);

/// Of what is seen of the console that standard output is; nothing where it is none.
LiveScreen::Size consoleSize();

/// Modes of a console, other ones for as long as it lives.
class ConsoleModes {
 public:
  ConsoleModes(HANDLE stream, DWORD without, DWORD with);
  ConsoleModes(const ConsoleModes&) = delete;
  ConsoleModes& operator=(const ConsoleModes&) = delete;
  ~ConsoleModes();

  bool isConsole() const { return m_isConsole; }
  /// Whether the console knows these modes.
  bool isTaken() const { return m_isTaken; }

 private:
  const HANDLE m_stream;
  DWORD m_former = 0;
  const bool m_isConsole;
  const bool m_isTaken;
};

/// The console takes what is written for UTF-8 for as long as it lives.
class Utf8Console {
 public:
  Utf8Console();
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console();

 private:
  const UINT m_former;
};

}  // namespace mirnctl

#endif
