#include "owner_only_windows.h"

#include <gtest/gtest.h>
#include <sddl.h>

#include "support/by_name.h"

namespace {

/// A security descriptor by its text; null when the text cannot be read.
class Descriptor {
 public:
  explicit Descriptor(const std::wstring& text) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    ::ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &descriptor,
                                                           nullptr);
    m_descriptor.reset(descriptor);
  }

  PSECURITY_DESCRIPTOR get() const { return m_descriptor.get(); }

 private:
  std::unique_ptr<void, LocalMemory> m_descriptor;
};

struct AccessRow {
  std::string name;
  std::wstring text;
  bool othersAreIn;
};

class AccessTest : public testing::TestWithParam<AccessRow> {};

TEST_P(AccessTest, LetsOthersInOrNot) {
  const Descriptor descriptor(GetParam().text);
  ASSERT_NE(descriptor.get(), nullptr);
  EXPECT_EQ(letsOthersIn(descriptor.get()), GetParam().othersAreIn);
}

INSTANTIATE_TEST_SUITE_P(
    Descriptors, AccessTest,
    testing::Values(AccessRow{"Nobody", L"O:S-1-5-21-1-2-3-1001D:", false},
                    AccessRow{"Owner", L"O:S-1-5-21-1-2-3-1001D:(A;;FA;;;S-1-5-21-1-2-3-1001)", false},
                    AccessRow{"Administration", L"O:S-1-5-21-1-2-3-1001D:(A;;FA;;;SY)(A;;FA;;;BA)", false},
                    AccessRow{"WhoeverOwnsIt", L"O:S-1-5-21-1-2-3-1001D:(A;;FA;;;OW)", false},
                    AccessRow{"OthersAreRefused", L"O:BAD:(D;;FR;;;WD)(A;;FA;;;BA)", false},
                    AccessRow{"OthersInWhatItHolds", L"O:BAD:(A;OIIO;FR;;;WD)(A;;FA;;;BA)", false},
                    AccessRow{"Everyone", L"O:BAD:(A;;FA;;;BA)(A;;FR;;;WD)", true},
                    AccessRow{"AnotherUser", L"O:BAD:(A;;FA;;;BA)(A;;FR;;;S-1-5-21-1-2-3-1002)", true},
                    AccessRow{"AnotherUserToWrite", L"O:BAD:(A;;FW;;;S-1-5-21-1-2-3-1002)", true},
                    AccessRow{"Users", L"O:BAD:(A;;FA;;;BA)(A;;FX;;;BU)", true},
                    AccessRow{"Guests", L"O:BAD:(A;ID;FR;;;BG)", true}, AccessRow{"NoList", L"O:BA", true}),
    ByName());

ACL* listOf(OwnerOnly& access) {
  ACL* list = nullptr;
  BOOL isThere = FALSE;
  BOOL isDefault = FALSE;
  ::GetSecurityDescriptorDacl(access.attributes()->lpSecurityDescriptor, &isThere, &list, &isDefault);
  return list;
}

const ACCESS_ALLOWED_ACE* entryOf(OwnerOnly& access) {
  void* entry = nullptr;
  return ::GetAce(listOf(access), 0, &entry) ? static_cast<ACCESS_ALLOWED_ACE*>(entry) : nullptr;
}

TEST(OwnerOnly, LetsNobodyElseInAndInheritsNothing) {
  for (const auto kind : {OwnerOnly::Kind::kFile, OwnerOnly::Kind::kDirectory}) {
    OwnerOnly access(kind);
    EXPECT_FALSE(letsOthersIn(access.attributes()->lpSecurityDescriptor));
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    ASSERT_TRUE(
        ::GetSecurityDescriptorControl(access.attributes()->lpSecurityDescriptor, &control, &revision));
    EXPECT_EQ(control & SE_DACL_PROTECTED, SE_DACL_PROTECTED);
  }
}

TEST(OwnerOnly, IsOneEntryWithAllAccess) {
  OwnerOnly file(OwnerOnly::Kind::kFile);
  ASSERT_EQ(listOf(file)->AceCount, 1);
  EXPECT_EQ(entryOf(file)->Mask, static_cast<DWORD>(FILE_ALL_ACCESS));
  EXPECT_EQ(entryOf(file)->Header.AceFlags, 0);
}

TEST(OwnerOnly, OfADirectoryIsHandedOn) {
  OwnerOnly directory(OwnerOnly::Kind::kDirectory);
  ASSERT_EQ(listOf(directory)->AceCount, 1);
  EXPECT_EQ(entryOf(directory)->Header.AceFlags, OBJECT_INHERIT_ACE | CONTAINER_INHERIT_ACE);
}

}  // namespace
