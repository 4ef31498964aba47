#ifndef MIRN_LOGGING_LOGGER_H
#define MIRN_LOGGING_LOGGER_H

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

/// A number on the way to the providers: other values are let through, and each provider reads them in its
/// own way.
enum class LogLevel : std::int32_t { kInfo = 0, kWarning = 1, kError = 2 };

namespace ovra {

/// The codes of `LoggerException`.
constexpr std::int32_t kLoggerStartFailed = 0;
constexpr std::int32_t kLoggerReportFailed = 1;

/// A failure to start the logger, or to hand a message on.
class LoggerException : public std::runtime_error {
 public:
  LoggerException(std::int32_t code, const std::string& message);

  std::int32_t code() const { return m_code; }

 private:
  std::int32_t m_code;
};

/// Takes messages somewhere. Implementations are final and are deleted as what they are,
/// see `makeLogProvider`.
class LoggerBaseLogProvider {
 public:
  virtual void report(LogLevel level, const std::wstring& text) = 0;

 protected:
  ~LoggerBaseLogProvider() = default;
};

/// Owns a provider and remembers its class for the deletion.
using LogProviderPointer = std::unique_ptr<LoggerBaseLogProvider, void (*)(LoggerBaseLogProvider*)>;

template <class Provider>
LogProviderPointer makeLogProvider() {
  return {new Provider, [](LoggerBaseLogProvider* provider) { delete static_cast<Provider*>(provider); }};
}

/// Provider kinds: their order is the order in which a message reaches them.
constexpr std::int32_t kConsoleProvider = 0;
constexpr std::int32_t kEventLogProvider = 1;

using LogProviders = std::map<std::int32_t, LogProviderPointer>;

/// The one channel for messages that are no answers to a request. Every message goes to every provider; there
/// is no filter. Callers build the whole text.
class Logger {
 public:
  /// The process-wide logger, made by the first call with the console and the system event log as providers,
  /// and destroyed at module exit. A failure raises `LoggerException` with code 0 and leaves the logger
  /// unmade, so that the next call tries again.
  static Logger& instance();

  explicit Logger(LogProviders providers);
  Logger(const Logger&) = delete;
  Logger& operator=(const Logger&) = delete;

  /// Sends one whole message; safe from any thread. The first provider that fails ends the walk, and its
  /// failure leaves as `LoggerException` with code 1.
  void log(LogLevel level, const std::wstring& text);

 private:
  void walk(std::int32_t selector, LogLevel level, const std::wstring& text);

  std::mutex m_mutex;  ///< One whole message.
  LogProviders m_providers;
};

}  // namespace ovra

#endif
