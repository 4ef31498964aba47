#include <boost/filesystem.hpp>

#include "event_log_api.h"
#include "event_log_provider.h"

namespace ovra {
namespace log {

namespace {

constexpr std::uint32_t kSuccess = 0;
constexpr std::uint32_t kAccessDenied = 5;

constexpr std::uint32_t kCategoryCount = 1;
constexpr std::uint32_t kTypesSupported = 7;  // errors, warnings and information
constexpr std::uint16_t kCategory = 1;

constexpr char kNoAdministrator[] = "The application must be run with administrator privileges";
constexpr char kCannotRegister[] = "Cannot register event source";
constexpr char kNoApplicationPath[] = "Could not get application path";
constexpr char kCannotOpen[] = "Cannot log event: cannot open event source";
constexpr char kCannotReport[] = "Cannot log event";
constexpr char kCannotClose[] = "Error while closing event source";

/// An identifier belongs to the message table of the host's executable.
struct EventKind {
  std::uint16_t type;
  std::uint32_t identifier;
};

EventKind eventKind(LogLevel level) {
  switch (level) {
    case LogLevel::kInfo:
      return {4, 0x40020102};
    case LogLevel::kWarning:
      return {2, 0x80020101};
    case LogLevel::kError:
      break;
  }
  return {1, 0xC0020100};
}

void require(bool condition, const char* failure) {
  if (!condition) throw LoggerException(kLoggerStartFailed, failure);
}

/// The registry key of the event source, made when it is missing.
class EventSourceKey {
 public:
  explicit EventSourceKey(IEventLogApi& api) : m_api(api) {
    const auto error = m_api.createKey(std::wstring(kEventSourceRegistryPath) + kEventSourceName, m_key);
    require(error != kAccessDenied, kNoAdministrator);
    require(error == kSuccess, kCannotRegister);
  }
  EventSourceKey(const EventSourceKey&) = delete;
  EventSourceKey& operator=(const EventSourceKey&) = delete;
  ~EventSourceKey() { m_api.closeKey(m_key); }

  /// The length leaves out the terminating zero and counts the two bytes of a character on Windows.
  void set(const wchar_t* name, const std::wstring& text) {
    const auto byteCount = static_cast<std::uint32_t>(2 * text.size());
    require(m_api.setText(m_key, name, text, byteCount) == kSuccess, kCannotRegister);
  }

  void set(const wchar_t* name, std::uint32_t number) {
    require(m_api.setNumber(m_key, name, number) == kSuccess, kCannotRegister);
  }

 private:
  IEventLogApi& m_api;
  IEventLogApi::Key m_key = nullptr;
};

/// The executable of the process, which carries the message table, and not this module.
std::wstring applicationPath(IEventLogApi& api) {
  const auto found = api.applicationPath();
  if (found.path.empty() || found.lastError != kSuccess) throw std::runtime_error(kNoApplicationPath);
  return boost::filesystem::canonical(found.path, boost::filesystem::current_path()).wstring();
}

}  // namespace

LoggerEventLogProvider::LoggerEventLogProvider() {
  const auto api = makeEventLogApi();
  EventSourceKey key(*api);
  const auto application = applicationPath(*api);
  key.set(L"EventMessageFile", application);
  key.set(L"CategoryCount", kCategoryCount);
  key.set(L"CategoryMessageFile", application);
  key.set(L"TypesSupported", kTypesSupported);
}

void LoggerEventLogProvider::report(LogLevel level, const std::wstring& text) {
  const auto api = makeEventLogApi();
  const auto kind = eventKind(level);
  const auto source = api->openSource(kEventSourceName);
  require(source != nullptr, kCannotOpen);
  const bool reported = api->reportEvent(source, kind.type, kCategory, kind.identifier, text);
  const bool closed = api->closeSource(source);
  require(reported, kCannotReport);
  require(closed, kCannotClose);
}

}  // namespace log
}  // namespace ovra
