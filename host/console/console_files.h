#ifndef MIRN_HOST_CONSOLE_CONSOLE_FILES_H
#define MIRN_HOST_CONSOLE_CONSOLE_FILES_H

#include <string_view>

namespace host {

/// The files of the console, as they were built in: constant bytes, for as long as the process lives.
struct ConsoleFiles {
  std::string_view page;
  std::string_view script;
  std::string_view style;
  std::string_view icon;
};

ConsoleFiles consoleFiles();

}  // namespace host

#endif
