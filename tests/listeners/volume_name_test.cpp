#include "volume_name.h"

#include <gtest/gtest.h>

#include "action_interfaces.h"
#include "service_exceptions.h"
#include "support/by_name.h"
#include "support/fake_session.h"

namespace {

constexpr char kAccepted[] = "accepted";
constexpr char kEmpty[] = "Volume name cannot be empty";
constexpr char kTooLong[] = "Volume name is too long";
constexpr char kWhitespace[] = "Volume name cannot start with whitespace";
constexpr char kForbidden[] = "Volume name contains a forbidden character";
constexpr char kInUse[] = "Volume name is already in use";

/// What is said of the name; every refusal has one error id.
std::string judge(const std::wstring& name, IMirnSession* session) {
  try {
    validateVolumeName(name, session);
    return kAccepted;
  } catch (const ListenerException& error) {
    EXPECT_STREQ(error.getErrorId(), "INVALID_PARAMETER");
    return error.what();
  }
}

struct NameRow {
  std::string name;
  std::wstring text;
  std::string verdict;
};

class VolumeNames : public testing::TestWithParam<NameRow> {};

TEST_P(VolumeNames, AreJudgedByTheirText) { EXPECT_EQ(judge(GetParam().text, nullptr), GetParam().verdict); }

INSTANTIATE_TEST_SUITE_P(
    Table, VolumeNames,
    testing::Values(NameRow{"Plain", L"Data", kAccepted}, NameRow{"Empty", L"", kEmpty},
                    NameRow{"SixteenUnits", L"0123456789abcdef", kAccepted},
                    NameRow{"SeventeenUnits", L"0123456789abcdefg", kTooLong},
                    NameRow{"LengthAheadOfWhitespace", L" 0123456789abcdef", kTooLong},
                    NameRow{"LengthAheadOfForbidden", L"\\0123456789abcdef", kTooLong},
                    NameRow{"BlankInside", L"a b", kAccepted}, NameRow{"BlankAtTheEnd", L"a ", kAccepted},
                    NameRow{"BlankAtTheStart", L" ab", kWhitespace},
                    NameRow{"TabAtTheStart", L"\tab", kWhitespace},
                    NameRow{"NewlineAtTheStart", L"\nab", kWhitespace},
                    NameRow{"VerticalTabAtTheStart", L"\vab", kWhitespace},
                    NameRow{"FormFeedAtTheStart", L"\fab", kWhitespace},
                    NameRow{"CarriageReturnAtTheStart", L"\rab", kWhitespace},
                    NameRow{"NulAtTheStart", std::wstring(L"\0ab", 3), kForbidden},
                    NameRow{"BackspaceAtTheStart", L"\bab", kForbidden},
                    NameRow{"InformationSeparatorAtTheStart", L"\x1f_ab", kForbidden},
                    NameRow{"NextLineAtTheStart", L"\x85_ab", kForbidden},
                    NameRow{"NoBreakSpaceAtTheStart", L"\xa0_ab", kForbidden},
                    NameRow{"OghamSpaceAtTheStart", L"\x1680_ab", kForbidden},
                    NameRow{"EmSpaceAtTheStart", L"\x2003_ab", kForbidden},
                    NameRow{"LineSeparatorAtTheStart", L"\x2028_ab", kForbidden},
                    NameRow{"IdeographicSpaceAtTheStart", L"\x3000_ab", kForbidden},
                    NameRow{"TabInside", L"a\tb", kForbidden},
                    NameRow{"WhitespaceAheadOfForbidden", L" a\\b", kWhitespace},
                    NameRow{"Backslash", L"a\\b", kForbidden}, NameRow{"Slash", L"a/b", kAccepted},
                    NameRow{"HighestPrintable", L"a~", kAccepted}, NameRow{"Delete", L"a\x7f", kForbidden},
                    NameRow{"BelowTheBlank", L"a\x1f", kForbidden}, NameRow{"Accented", L"\xe9", kForbidden},
                    NameRow{"Wide", L"\x4e2d", kForbidden},
                    NameRow{"EmbeddedNul", std::wstring(L"a\0b", 3), kForbidden}),
    ByName());

TEST(VolumeNamesInUse, AreRefused) {
  FakeSession session;
  session.volumes = {aVolume(L"7").name(L"Data")};
  EXPECT_EQ(judge(L"Data", &session), kInUse);
}

TEST(VolumeNamesInUse, AreComparedByCodeUnit) {
  FakeSession session;
  session.volumes = {aVolume(L"7").name(L"Data")};
  EXPECT_EQ(judge(L"data", &session), kAccepted);
  EXPECT_EQ(judge(L"Data ", &session), kAccepted);
}

TEST(VolumeNamesInUse, AreLookedUpOnlyForAPossibleName) {
  FakeSession session;
  session.volumes = {aVolume(L"7").name(L"a\\b")};
  EXPECT_EQ(judge(L"a\\b", &session), kForbidden);
  EXPECT_EQ(session.reads["getVolumes"], 0);
}

TEST(VolumeNamesInUse, DoNotMatterWithoutASession) { EXPECT_EQ(judge(L"Data", nullptr), kAccepted); }

static_assert(kMaxVolumeNameSize == 16);

}  // namespace
