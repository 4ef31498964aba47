#ifndef MIRN_PLATFORM_EVENT_LOG_API_H
#define MIRN_PLATFORM_EVENT_LOG_API_H

#include <cstdint>
#include <memory>
#include <string>

/// What is called of the Windows registry and event log, one operation a call: the rules around them stand
/// above and are tested on every platform with a stand-in.
class IEventLogApi {
 public:
  using Key = void*;
  using Source = void*;

  struct ApplicationPath {
    std::wstring path;        ///< Empty when there is none.
    std::uint32_t lastError;  ///< What GetLastError gives after the call.
  };

  virtual ~IEventLogApi() = default;

  /// RegCreateKeyExW in the machine-wide hive, with options 0, no class and the right to set values. The
  /// result is its error number, 0 for success; `key` is set then.
  virtual std::uint32_t createKey(const std::wstring& path, Key& key) = 0;

  /// RegSetValueExW with REG_SZ and the length in bytes as told, and with REG_DWORD. The result is
  /// its error number.
  virtual std::uint32_t setText(Key key, const std::wstring& name, const std::wstring& text,
                                std::uint32_t byteCount) = 0;
  virtual std::uint32_t setNumber(Key key, const std::wstring& name, std::uint32_t number) = 0;

  /// RegCloseKey.
  virtual void closeKey(Key key) = 0;

  /// GetModuleFileNameW for the process's executable, with room for 260 characters.
  virtual ApplicationPath applicationPath() = 0;

  /// RegisterEventSourceW on this computer; null when it fails.
  virtual Source openSource(const std::wstring& name) = 0;

  /// ReportEventW with one text, no user and no raw data.
  virtual bool reportEvent(Source source, std::uint16_t type, std::uint16_t category,
                           std::uint32_t identifier, const std::wstring& text) = 0;

  /// DeregisterEventSource.
  virtual bool closeSource(Source source) = 0;
};

/// The real one; on Windows only.
std::unique_ptr<IEventLogApi> makeEventLogApi();

#endif
