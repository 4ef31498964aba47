#include "logging/console_provider.h"

#include <ctime>
#include <iostream>

#include "logging/console_line.h"
#include "platform/local_time.h"

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
