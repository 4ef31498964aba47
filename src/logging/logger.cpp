#include "logger.h"

#include <utility>

#include "console_provider.h"
#include "event_log_provider.h"

namespace ovra {

namespace {

constexpr char kCannotStart[] = "Unable to start logging service";
constexpr char kCannotReport[] =
    "Logger could not report event";  // the prefix of a known cause has its own full stop
constexpr char kCannotReportBecause[] = "Logger could not report event. ";

/// What a walk reaches: every provider; with any other value it would be the console alone. Nothing chooses.
constexpr std::int32_t kEveryProvider = 1;

LogProviders makeProviders() {
  try {
    LogProviders providers;
    providers.emplace(kConsoleProvider, makeLogProvider<log::LoggerConsoleProvider>());
    providers.emplace(kEventLogProvider, makeLogProvider<log::LoggerEventLogProvider>());
    return providers;
  } catch (const LoggerException& failure) {
    throw LoggerException(failure);
  } catch (...) {
    throw LoggerException(kLoggerStartFailed, kCannotStart);
  }
}

}  // namespace

LoggerException::LoggerException(std::int32_t code, const std::string& message)
    : std::runtime_error(message), m_code(code) {}

Logger& Logger::instance() {
  static Logger logger(makeProviders());
  return logger;
}

Logger::Logger(LogProviders providers) : m_providers(std::move(providers)) {}

void Logger::log(LogLevel level, const std::wstring& text) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  try {
    walk(kEveryProvider, level, text);
  } catch (const std::runtime_error& failure) {
    throw LoggerException(kLoggerReportFailed, std::string(kCannotReportBecause) + failure.what());
  } catch (...) {
    throw LoggerException(kLoggerReportFailed, kCannotReport);
  }
}

void Logger::walk(std::int32_t selector, LogLevel level, const std::wstring& text) {
  for (auto& [kind, provider] : m_providers) {
    if (selector == kEveryProvider || kind == kConsoleProvider) provider->report(level, text);
  }
}

}  // namespace ovra
