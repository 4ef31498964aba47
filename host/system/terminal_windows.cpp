#include <windows.h>

#include "system/terminal.h"

namespace host {

/// Only a console has a mode.
bool isOutputTerminal() {
  DWORD mode = 0;
  return ::GetConsoleMode(::GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

}  // namespace host
