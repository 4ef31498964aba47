#include <windows.h>

#include <array>

#include "event_log_api.h"

namespace {

HKEY keyOf(IEventLogApi::Key key) { return static_cast<HKEY>(key); }

class EventLogApi final : public IEventLogApi {
 public:
  std::uint32_t createKey(const std::wstring& path, Key& key) override {
    HKEY created = nullptr;
    const auto error = ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, nullptr,
                                         REG_OPTION_NON_VOLATILE, KEY_SET_VALUE, nullptr, &created, nullptr);
    if (error == ERROR_SUCCESS) key = created;
    return static_cast<std::uint32_t>(error);
  }

  std::uint32_t setText(Key key, const std::wstring& name, const std::wstring& text,
                        std::uint32_t byteCount) override {
    return set(key, name, REG_SZ, text.c_str(), byteCount);
  }

  std::uint32_t setNumber(Key key, const std::wstring& name, std::uint32_t number) override {
    const DWORD data = number;
    return set(key, name, REG_DWORD, &data, sizeof data);
  }

  void closeKey(Key key) override { ::RegCloseKey(keyOf(key)); }

  ApplicationPath applicationPath() override {
    std::array<wchar_t, 260> path{};
    ::SetLastError(ERROR_SUCCESS);  // a success does not, and an older failure is not this call's
    const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const DWORD lastError = ::GetLastError();
    return {std::wstring(path.data(), length), lastError};
  }

  Source openSource(const std::wstring& name) override {
    return ::RegisterEventSourceW(nullptr, name.c_str());
  }

  bool reportEvent(Source source, std::uint16_t type, std::uint16_t category, std::uint32_t identifier,
                   const std::wstring& text) override {
    const wchar_t* texts[] = {text.c_str()};
    return ::ReportEventW(source, type, category, identifier, nullptr, 1, 0, texts, nullptr) != FALSE;
  }

  bool closeSource(Source source) override { return ::DeregisterEventSource(source) != FALSE; }

 private:
  static std::uint32_t set(Key key, const std::wstring& name, DWORD type, const void* data, DWORD size) {
    return static_cast<std::uint32_t>(
        ::RegSetValueExW(keyOf(key), name.c_str(), 0, type, static_cast<const BYTE*>(data), size));
  }
};

}  // namespace

std::unique_ptr<IEventLogApi> makeEventLogApi() { return std::make_unique<EventLogApi>(); }
