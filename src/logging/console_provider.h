#ifndef MIRN_LOGGING_CONSOLE_PROVIDER_H
#define MIRN_LOGGING_CONSOLE_PROVIDER_H

#include "logger.h"

namespace ovra {
namespace log {

/// Writes information to `std::wcout` as it is, and everything else to `std::wcerr` behind the local time and
/// the word "Warning" or "Error". A level that is no `LogLevel` counts as a warning.
class LoggerConsoleProvider final : public LoggerBaseLogProvider {
 public:
  void report(LogLevel level, const std::wstring& text) override;
};

}  // namespace log
}  // namespace ovra

#endif
