#include "console_provider.h"

#include <ctime>
#include <iostream>

#include "console_line.h"
#include "local_time.h"

namespace ovra {
namespace log {

void LoggerConsoleProvider::report(LogLevel level, const std::wstring& text) {
  if (level == LogLevel::kInfo) {
    writeConsoleLine(std::wcout, text);
  } else {
    writeConsoleLine(std::wcerr, consolePrefix(level, localTime(std::time(nullptr))) + text);
  }
}

}  // namespace log
}  // namespace ovra
