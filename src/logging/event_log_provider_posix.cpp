#include <syslog.h>

#include "event_log_provider.h"
#include "log_text.h"
#include "text.h"

namespace ovra {
namespace log {

namespace {

int priority(LogLevel level) {
  switch (level) {
    case LogLevel::kInfo:
      return LOG_INFO;
    case LogLevel::kWarning:
      return LOG_WARNING;
    case LogLevel::kError:
      break;
  }
  return LOG_ERR;
}

std::string toUtf8(const std::wstring& text) {
  try {
    return wideToUtf8(text);
  } catch (const std::range_error&) {
    return wideToUtf8(escapeText(text));
  }
}

}  // namespace

LoggerEventLogProvider::LoggerEventLogProvider() = default;

/// The log keeps a pointer to its ident: it must be closed before the ident goes, at the latest
/// with this module.
void LoggerEventLogProvider::report(LogLevel level, const std::wstring& text) {
  const auto ident = wideToUtf8(kEventSourceName);
  const auto message = toUtf8(text);
  ::openlog(ident.c_str(), 0, LOG_DAEMON);
  ::syslog(priority(level), "%s", message.c_str());
  ::closelog();
}

}  // namespace log
}  // namespace ovra
