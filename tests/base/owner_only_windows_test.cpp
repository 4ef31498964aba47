#include "owner_only_windows.h"

#include <gtest/gtest.h>
#include <sddl.h>

#include "support/by_name.h"
#include "support/temporary_folder.h"

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

ACCESS_ALLOWED_ACE* entryOf(OwnerOnly& access, DWORD place) {
  void* entry = nullptr;
  return ::GetAce(listOf(access), place, &entry) ? static_cast<ACCESS_ALLOWED_ACE*>(entry) : nullptr;
}

PSID sidOf(OwnerOnly& access, DWORD place) { return &entryOf(access, place)->SidStart; }

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

/// Wine's user administers the machine: an entry for that user, the system, and the administrators.
TEST(OwnerOnly, OfAnAdministratorIsForTheSystemToo) {
  OwnerOnly file(OwnerOnly::Kind::kFile);
  ASSERT_EQ(listOf(file)->AceCount, 3);
  EXPECT_TRUE(::IsWellKnownSid(sidOf(file, 1), WinLocalSystemSid));
  EXPECT_TRUE(::IsWellKnownSid(sidOf(file, 2), WinBuiltinAdministratorsSid));
}

TEST(OwnerOnly, GivesAllAccess) {
  OwnerOnly file(OwnerOnly::Kind::kFile);
  for (DWORD i = 0; i < listOf(file)->AceCount; ++i) {
    EXPECT_EQ(entryOf(file, i)->Mask, static_cast<DWORD>(FILE_ALL_ACCESS));
    EXPECT_EQ(entryOf(file, i)->Header.AceFlags, 0);
  }
}

TEST(Ownership, OfWhatThisUserMadeIsTheAdministrations) {
  const TemporaryFolder folder;
  EXPECT_TRUE(isOwnedByAdministration(folder.path().wstring()));
  EXPECT_THROW(isOwnedByAdministration((folder.path() / "none").wstring()), std::runtime_error);
}

TEST(OwnerOnly, OfADirectoryIsHandedOn) {
  OwnerOnly directory(OwnerOnly::Kind::kDirectory);
  for (DWORD i = 0; i < listOf(directory)->AceCount; ++i) {
    EXPECT_EQ(entryOf(directory, i)->Header.AceFlags, OBJECT_INHERIT_ACE | CONTAINER_INHERIT_ACE);
  }
}

}  // namespace
