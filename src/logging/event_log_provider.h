#ifndef MIRN_LOGGING_EVENT_LOG_PROVIDER_H
#define MIRN_LOGGING_EVENT_LOG_PROVIDER_H

#include "logger.h"

/// Under this name the messages stand in the system's event log.
constexpr wchar_t kEventSourceName[] = L"Ordan Ovraline";
constexpr wchar_t kEventSourceRegistryPath[] =
    L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\";

namespace ovra {
namespace log {

/// Writes to the system's event log: the Windows event log, or syslog(3) elsewhere. The log is opened and
/// closed for each message. A level that is no `LogLevel` counts as an error.
class LoggerEventLogProvider final : public LoggerBaseLogProvider {
 public:
  /// Registers the event source where the system asks for it. Failures are `LoggerException` with code 0, or
  /// `std::runtime_error` when the path of the application cannot be had.
  LoggerEventLogProvider();

  /// Failures are `LoggerException` with code 0.
  void report(LogLevel level, const std::wstring& text) override;
};

}  // namespace log
}  // namespace ovra

#endif
