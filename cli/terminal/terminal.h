#ifndef MIRN_CLI_TERMINAL_TERMINAL_H
#define MIRN_CLI_TERMINAL_TERMINAL_H

#include <istream>
#include <ostream>

#include "answers/table.h"

namespace mirnctl {

/// Where a command reads and writes, and who is there.
struct Terminal {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  Screen screen{};             ///< Of standard output.
  bool asksPeople = false;     ///< Somebody types, and sees standard error.
  bool showsProgress = false;  ///< Somebody sees standard error.

  /// Whether what is typed is seen. An interrupt meanwhile leaves nobody with a terminal that shows nothing:
  /// it is a character, \x03, that ends the line, or it ends the program and typing is seen again. Null:
  /// nothing can be done about it.
  void (*showTyping)(bool isShown) = nullptr;
};

/// That of the process; one source a system.
Terminal processTerminal();

}  // namespace mirnctl

#endif
