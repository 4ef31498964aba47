#include "system/event_log_windows.h"

#include <windows.h>

#include <memory>
#include <stdexcept>
#include <type_traits>

#include "system/process_windows.h"
#include "system_reason.h"
#include "text.h"

namespace host {

namespace {

constexpr wchar_t kSource[] = L"mirn-host";
constexpr wchar_t kSourceKey[] = L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\mirn-host";

// Of the message table.
constexpr WORD kCategory = 2;
constexpr DWORD kCategoryCount = 2;
constexpr DWORD kErrorEvent = 0xC0030200;
constexpr DWORD kInformationEvent = 0x40030202;

constexpr DWORD kTypesSupported = EVENTLOG_ERROR_TYPE | EVENTLOG_WARNING_TYPE | EVENTLOG_INFORMATION_TYPE;

/// The system takes no longer text.
constexpr std::size_t kLongestText = 31838;

struct KeyClosing {
  void operator()(HKEY key) const { ::RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, KeyClosing>;

/// `error` is what a call of the registry gave.
void require(LSTATUS error) {
  if (error == ERROR_SUCCESS) return;
  ::SetLastError(static_cast<DWORD>(error));
  throw std::runtime_error(std::string("the event log does not take the host in: ") +
                           lastSystemFailure().what());
}

void set(const Key& key, const wchar_t* name, const std::wstring& text) {
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  require(::RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes));
}

void set(const Key& key, const wchar_t* name, DWORD number) {
  require(
      ::RegSetValueExW(key.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number));
}

/// Cut where it is too long; one that is no UTF-8 as far as that goes.
std::wstring eventText(const std::string& text) try {
  return utf8ToWide(text).substr(0, kLongestText);
} catch (const std::range_error&) {
  return std::wstring(text.begin(), text.end()).substr(0, kLongestText);
}

}  // namespace

void registerEventSource() {
  HKEY opened = nullptr;
  require(::RegCreateKeyExW(HKEY_LOCAL_MACHINE, kSourceKey, 0, nullptr, REG_OPTION_NON_VOLATILE,
                            KEY_SET_VALUE, nullptr, &opened, nullptr));
  const Key key(opened);
  const std::wstring program = programFile().wstring();
  set(key, L"EventMessageFile", program);
  set(key, L"CategoryMessageFile", program);
  set(key, L"CategoryCount", kCategoryCount);
  set(key, L"TypesSupported", kTypesSupported);
}

void unregisterEventSource() {
  const LSTATUS error = ::RegDeleteKeyW(HKEY_LOCAL_MACHINE, kSourceKey);
  if (error != ERROR_FILE_NOT_FOUND) require(error);
}

void writeEvent(EventKind kind, const std::string& text) {
  const HANDLE source = ::RegisterEventSourceW(nullptr, kSource);
  if (source == nullptr) return;
  const std::wstring wide = eventText(text);
  const wchar_t* texts[] = {wide.c_str()};
  const bool isError = kind == EventKind::kError;
  ::ReportEventW(source, isError ? EVENTLOG_ERROR_TYPE : EVENTLOG_INFORMATION_TYPE, kCategory,
                 isError ? kErrorEvent : kInformationEvent, nullptr, 1, 0, texts, nullptr);
  ::DeregisterEventSource(source);
}

}  // namespace host
