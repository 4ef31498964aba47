#include <unistd.h>

#include "system/terminal.h"

namespace host {

bool isOutputTerminal() { return ::isatty(STDOUT_FILENO) == 1; }

}  // namespace host
