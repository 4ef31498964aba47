#include "settings_store.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <boost/optional/optional_io.hpp>
#include <limits>

#include "support/by_name.h"
#include "support/restricted_key_windows.h"

// On the machine-wide hive itself, under a key of the tests' own.

namespace {

constexpr wchar_t kTestKey[] = L"SOFTWARE\\Mirn tests\\settings store";
constexpr wchar_t kKey[] = L"SOFTWARE\\Mirn tests\\settings store\\Device";
constexpr wchar_t kName[] = L"LedLocateTimeout";

class SettingsStore : public testing::Test {
 protected:
  SettingsStore() { ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kTestKey); }
  ~SettingsStore() override { ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kTestKey); }

  /// Past the store, as another program does.
  static void given(DWORD type, const void* data, DWORD size) {
    ASSERT_EQ(::RegSetKeyValueW(HKEY_LOCAL_MACHINE, kKey, kName, type, data, size), ERROR_SUCCESS);
  }

  static void given(DWORD value) { given(REG_DWORD, &value, sizeof value); }

  /// What another program finds: the value when it is a REG_DWORD of four bytes.
  static boost::optional<std::uint32_t> found() {
    DWORD value = 0;
    DWORD type = 0;
    DWORD size = sizeof value;
    const auto error = ::RegGetValueW(HKEY_LOCAL_MACHINE, kKey, kName, RRF_RT_ANY, &type, &value, &size);
    if (error != ERROR_SUCCESS || type != REG_DWORD || size != sizeof value) return boost::none;
    return static_cast<std::uint32_t>(value);
  }

  static std::unique_ptr<ISettingsKey> open(SettingsAccess access) {
    return makeSettingsStore()->open(kKey, access);
  }

  static boost::optional<std::uint32_t> read() {
    const auto key = open(SettingsAccess::kRead);
    return key ? key->read(kName) : boost::none;
  }
};

class StoredNumber : public SettingsStore, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(StoredNumber, IsReadAsItIs) {
  given(GetParam());
  EXPECT_EQ(read(), GetParam());
}

TEST_P(StoredNumber, IsWrittenAsADoubleWord) {
  given(7);
  const auto key = open(SettingsAccess::kWrite);
  ASSERT_TRUE(key);
  EXPECT_TRUE(key->write(kName, GetParam()));
  EXPECT_EQ(found(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(SettingsStore, StoredNumber,
                         testing::Values(0U, 1U, 12U, 3600U, 3601U,
                                         std::numeric_limits<std::uint32_t>::max()));

TEST_F(SettingsStore, DoesNotOpenAKeyThatIsMissingAndDoesNotMakeIt) {
  EXPECT_FALSE(open(SettingsAccess::kRead));
  EXPECT_FALSE(open(SettingsAccess::kWrite));
  HKEY key = nullptr;
  EXPECT_EQ(::RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
}

TEST_F(SettingsStore, HasNoValueUnderAnotherName) {
  given(60);
  const auto key = open(SettingsAccess::kRead);
  ASSERT_TRUE(key);
  EXPECT_FALSE(key->read(L"LedLocateTime"));
}

struct OtherType {
  const char* name;
  DWORD type;
  std::string data;
};

class ValueOfAnotherType : public SettingsStore, public testing::WithParamInterface<OtherType> {};

TEST_P(ValueOfAnotherType, IsNoValue) {
  given(GetParam().type, GetParam().data.data(), static_cast<DWORD>(GetParam().data.size()));
  EXPECT_EQ(read(), boost::none);
}

INSTANTIATE_TEST_SUITE_P(SettingsStore, ValueOfAnotherType,
                         testing::Values(OtherType{"Text", REG_SZ, std::string("6\0\0\0", 4)},
                                         OtherType{"Bytes", REG_BINARY, std::string("\074\0\0\0", 4)},
                                         OtherType{"EightBytes", REG_QWORD,
                                                   std::string("\074\0\0\0\0\0\0\0", 8)}),
                         ByName());

TEST_F(SettingsStore, RefusesToWriteThroughAKeyOpenForReading) {
  given(5);
  EXPECT_FALSE(open(SettingsAccess::kRead)->write(kName, 60));
  EXPECT_EQ(found(), 5U);
}

TEST_F(SettingsStore, IsReadButNotWrittenByWhoMayOnlyRead) {
  given(5);
  const RestrictedKey restricted(kKey, RestrictedKey::Rights::kRead);
  EXPECT_FALSE(open(SettingsAccess::kWrite));
  EXPECT_EQ(read(), 5U);
}

TEST_F(SettingsStore, IsNotOpenedByWhoMayDoNothing) {
  given(5);
  const RestrictedKey restricted(kKey, RestrictedKey::Rights::kNone);
  EXPECT_FALSE(open(SettingsAccess::kWrite));
  EXPECT_FALSE(open(SettingsAccess::kRead));
}

TEST_F(SettingsStore, RefusesToReadThroughAKeyOpenForWriting) {
  given(5);
  EXPECT_FALSE(open(SettingsAccess::kWrite)->read(kName));
}

}  // namespace
