#include "event_log_provider.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <boost/filesystem.hpp>

#include "logger.h"
#include "support/restricted_key_windows.h"

// On the system's own registry and event log.

namespace {

const std::wstring kKey = std::wstring(kEventSourceRegistryPath) + kEventSourceName;

class EventSource : public testing::Test {
 protected:
  EventSource() { ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey.c_str()); }

  /// The bytes of a value of this type, as they stand there.
  static std::string bytesOf(const wchar_t* name, DWORD expectedType) {
    HKEY key = nullptr;
    EXPECT_EQ(::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey.c_str(), 0, KEY_READ, &key), ERROR_SUCCESS);
    std::array<char, 1024> data{};
    auto size = static_cast<DWORD>(data.size());
    DWORD type = 0;
    EXPECT_EQ(::RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size),
              ERROR_SUCCESS);
    ::RegCloseKey(key);
    EXPECT_EQ(type, expectedType);
    return std::string(data.data(), size);
  }

  static DWORD numberOf(const wchar_t* name) {
    const std::string bytes = bytesOf(name, REG_DWORD);
    DWORD number = 0;
    EXPECT_EQ(bytes.size(), sizeof number);
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
  }

  /// The registry itself keeps a zero that it finds behind the stated length.
  static std::wstring textOf(const wchar_t* name) {
    const std::string bytes = bytesOf(name, REG_SZ);
    std::wstring text(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
    if (!text.empty() && text.back() == L'\0') text.pop_back();
    return text;
  }

  static std::wstring thisProgram() {
    std::array<wchar_t, MAX_PATH> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return boost::filesystem::canonical(path.data()).wstring();
  }
};

TEST_F(EventSource, IsRegisteredWithItsFourValues) {
  const ovra::log::LoggerEventLogProvider provider;
  EXPECT_EQ(textOf(L"EventMessageFile"), thisProgram());
  EXPECT_EQ(numberOf(L"CategoryCount"), 1U);
  EXPECT_EQ(textOf(L"CategoryMessageFile"), thisProgram());
  EXPECT_EQ(numberOf(L"TypesSupported"), 7U);
}

TEST_F(EventSource, IsRegisteredOverWhatWasThere) {
  const DWORD old = 3;
  ASSERT_EQ(
      ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey.c_str(), L"TypesSupported", REG_DWORD, &old, sizeof old),
      ERROR_SUCCESS);
  const ovra::log::LoggerEventLogProvider provider;
  EXPECT_EQ(numberOf(L"TypesSupported"), 7U);
}

TEST_F(EventSource, IsNotRegisteredByWhoMayOnlyRead) {
  const RestrictedKey restricted(kKey, RestrictedKey::Rights::kRead);
  try {
    const ovra::log::LoggerEventLogProvider provider;
    FAIL() << "registered";
  } catch (const ovra::LoggerException& failure) {
    EXPECT_EQ(failure.code(), 0);
    EXPECT_STREQ(failure.what(), "The application must be run with administrator privileges");
  }
}

TEST_F(EventSource, TakesAMessageOfEachLevel) {
  ovra::log::LoggerEventLogProvider provider;
  for (const std::int32_t level : {0, 1, 2, 5}) {
    EXPECT_NO_THROW(provider.report(static_cast<LogLevel>(level), L"text of the tests")) << level;
  }
}

TEST_F(EventSource, IsMadeByTheFirstUseOfTheLogger) {
  ovra::Logger::instance().log(LogLevel::kInfo, L"text of the tests");
  EXPECT_EQ(textOf(L"EventMessageFile"), thisProgram());
}

}  // namespace
