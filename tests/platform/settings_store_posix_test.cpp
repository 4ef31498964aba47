#include "settings_store.h"

#include <gtest/gtest.h>

#include <boost/optional/optional_io.hpp>

#include "support/by_name.h"
#include "support/environment.h"
#include "support/file_size_limit.h"
#include "support/ordinary_user.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = boost::filesystem;

constexpr wchar_t kKey[] = L"SYSTEM\\Services\\driver.v1\\Device";
constexpr wchar_t kName[] = L"Time.Out";

class SettingsStore : public testing::Test {
 protected:
  SettingsStore() { setVariable("MIRN_REGISTRY", m_path.string()); }
  ~SettingsStore() override { unsetVariable("MIRN_REGISTRY"); }

  void givenFile(const std::string& text) { writeText(m_path, text); }
  std::string file() const { return readText(m_path); }

  static std::unique_ptr<ISettingsKey> open(SettingsAccess access) {
    return makeSettingsStore()->open(kKey, access);
  }

  static bool opensForReading() { return open(SettingsAccess::kRead) != nullptr; }
  static bool opensForWriting() { return open(SettingsAccess::kWrite) != nullptr; }

  static boost::optional<std::uint32_t> read() {
    const auto key = open(SettingsAccess::kRead);
    return key ? key->read(kName) : boost::none;
  }

  static bool write(std::uint32_t value) {
    const auto key = open(SettingsAccess::kWrite);
    return key && key->write(kName, value);
  }

  TemporaryFolder m_folder;
  fs::path m_path = m_folder / "registry.ini";
};

TEST_F(SettingsStore, ReadsAValueByKeyAndName) {
  givenFile("[SYSTEM\\Services\\driver.v1\\Device]\nOther=1\nTime.Out=60\n[SYSTEM]\nTime.Out=2\n");
  EXPECT_EQ(read(), 60u);
}

TEST_F(SettingsStore, ReadsAFileWithCommentsAndBlanks) {
  givenFile(
      "; by hand\n\n# as well\n [SYSTEM\\Services\\driver.v1\\Device] \n; unit: s\n  Time.Out = 60  \n");
  EXPECT_EQ(read(), 60u);
}

TEST_F(SettingsStore, HasNoValueUnderAnotherName) {
  givenFile("[SYSTEM\\Services\\driver.v1\\Device]\nOther=1\n");
  const auto key = open(SettingsAccess::kRead);
  ASSERT_TRUE(key);
  EXPECT_FALSE(key->read(kName));
}

TEST_F(SettingsStore, DoesNotOpenWhatIsMissing) {
  EXPECT_FALSE(opensForReading()) << "file";
  givenFile("[Other]\nTime.Out=60\n");
  EXPECT_FALSE(opensForReading()) << "key";
}

TEST_F(SettingsStore, DoesNotOpenWhatIsNoFile) {
  fs::create_directory(m_path);
  EXPECT_FALSE(opensForReading());
  EXPECT_FALSE(write(1));
}

struct Value {
  const char* name;
  std::string text;
  boost::optional<std::uint32_t> number;
};

class StoredValue : public SettingsStore, public testing::WithParamInterface<Value> {};

TEST_P(StoredValue, IsAnUnsignedDecimalOrNothing) {
  givenFile("[SYSTEM\\Services\\driver.v1\\Device]\nTime.Out=" + GetParam().text + "\n");
  EXPECT_EQ(read(), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    SettingsStore, StoredValue,
    testing::Values(Value{"Zero", "0", 0u}, Value{"LeadingZeros", "0012", 12u},
                    Value{"Largest", "4294967295", 4294967295u}, Value{"TooLarge", "4294967296", boost::none},
                    Value{"Negative", "-1", boost::none}, Value{"Signed", "+1", boost::none},
                    Value{"Hexadecimal", "0x10", boost::none}, Value{"Fraction", "1.5", boost::none},
                    Value{"Commented", "12 ; seconds", boost::none}, Value{"Word", "twelve", boost::none},
                    Value{"Empty", "", boost::none}),
    ByName());

TEST_F(SettingsStore, WritesAValueThatIsReadBack) {
  ASSERT_TRUE(write(4294967295u));
  EXPECT_EQ(read(), 4294967295u);
  ASSERT_TRUE(write(0));
  EXPECT_EQ(read(), 0u);
}

TEST_F(SettingsStore, MakesAMissingFileAndNothingElse) {
  ASSERT_TRUE(write(60));
  EXPECT_EQ(file(), "[SYSTEM\\Services\\driver.v1\\Device]\nTime.Out=60\n");
  EXPECT_EQ(m_folder.entries(), 1u);
}

TEST_F(SettingsStore, KeepsWhatElseIsInTheFile) {
  givenFile(
      "top=0\n[First.one]\na.b=x "
      "y\n[SYSTEM\\Services\\driver.v1\\Device]\nOther=1\nTime.Out=5\n[Last]\nz=9\n");
  ASSERT_TRUE(write(60));
  EXPECT_EQ(file(),
            "top=0\n[First.one]\na.b=x "
            "y\n[SYSTEM\\Services\\driver.v1\\Device]\nOther=1\nTime.Out=60\n[Last]\nz=9\n");
}

class UnreadableText : public SettingsStore, public testing::WithParamInterface<std::string> {};

TEST_P(UnreadableText, IsRefusedAndLeftAlone) {
  givenFile(GetParam());
  EXPECT_FALSE(opensForReading());
  EXPECT_FALSE(write(60));
  EXPECT_EQ(file(), GetParam());
}

INSTANTIATE_TEST_SUITE_P(SettingsStore, UnreadableText,
                         testing::Values("no section, no value\n", "[open\na=1\n", "[a]\n=1\n",
                                         "[a]\nb=1\nb=2\n", "[a]\nx=1\n[a]\nx=2\n",
                                         std::string("\0\1\2\n", 4)));

TEST_F(SettingsStore, RefusesToWriteThroughAKeyOpenForReading) {
  ASSERT_TRUE(write(5));
  EXPECT_FALSE(open(SettingsAccess::kRead)->write(kName, 60));
  EXPECT_EQ(read(), 5u);
}

TEST_F(SettingsStore, DoesNotMakeAMissingFolder) {
  setVariable("MIRN_REGISTRY", (m_folder / "missing" / "registry.ini").string());
  EXPECT_FALSE(opensForWriting());
  EXPECT_EQ(m_folder.entries(), 0u);
}

TEST_F(SettingsStore, KeepsTheOldValueWhenTheDiskIsFull) {
  ASSERT_TRUE(write(5));
  {
    const FileSizeLimit limit(8);
    EXPECT_FALSE(write(60));
  }
  EXPECT_EQ(read(), 5u);
}

TEST_F(SettingsStore, KeepsALinkToTheFile) {
  const auto target = m_folder / "target.ini";
  writeText(target, "[a]\nb=1\n");
  fs::create_symlink(target, m_path);
  ASSERT_TRUE(write(60));
  EXPECT_TRUE(fs::is_symlink(m_path));
  EXPECT_EQ(readText(target), "[a]\nb=1\n[SYSTEM\\Services\\driver.v1\\Device]\nTime.Out=60\n");
}

TEST_F(SettingsStore, KeepsALinkToAMissingFileAndMakesTheFile) {
  fs::create_directory(m_folder / "elsewhere");
  fs::create_symlink("elsewhere/target.ini", m_path);
  EXPECT_FALSE(opensForReading());
  ASSERT_TRUE(write(60));
  EXPECT_EQ(fs::read_symlink(m_path), "elsewhere/target.ini");
  EXPECT_EQ(readText(m_folder / "elsewhere/target.ini"),
            "[SYSTEM\\Services\\driver.v1\\Device]\nTime.Out=60\n");
  EXPECT_EQ(read(), 60u);
}

TEST_F(SettingsStore, IsNotMadeBehindALinkToAMissingFolder) {
  fs::create_symlink("missing/target.ini", m_path);
  EXPECT_FALSE(opensForWriting());
}

TEST_F(SettingsStore, IsNotOpenedInARingOfLinks) {
  fs::create_symlink("registry.ini", m_path);
  EXPECT_FALSE(opensForReading());
  EXPECT_FALSE(opensForWriting());
}

TEST_F(SettingsStore, MayBeABareName) {
  const auto before = fs::current_path();
  fs::current_path(m_folder.path());
  setVariable("MIRN_REGISTRY", "settings.ini");
  EXPECT_TRUE(write(60)) << "made";
  EXPECT_TRUE(write(61)) << "changed";
  EXPECT_EQ(read(), 61u);
  fs::current_path(before);
  EXPECT_EQ(readText(m_folder / "settings.ini"), "[SYSTEM\\Services\\driver.v1\\Device]\nTime.Out=61\n");
}

TEST_F(SettingsStore, TakesAValueInAFolderThatCannotBeOpened) {
  ASSERT_TRUE(write(5));
  fs::permissions(m_path, static_cast<fs::perms>(0666));
  fs::permissions(m_folder.path(), static_cast<fs::perms>(0333));
  {
    const OrdinaryUser user;
    EXPECT_TRUE(write(60)) << "the new value stands";
  }
  fs::permissions(m_folder.path(), fs::owner_all);
  EXPECT_EQ(read(), 60u);
}

TEST_F(SettingsStore, IsNotReadWithoutRights) {
  ASSERT_TRUE(write(5));
  fs::permissions(m_folder.path(), static_cast<fs::perms>(0755));
  fs::permissions(m_path, fs::no_perms);
  const OrdinaryUser user;
  EXPECT_FALSE(opensForReading());
}

TEST_F(SettingsStore, IsNotOpenedForWritingWithoutRightsOnTheFile) {
  ASSERT_TRUE(write(5));
  fs::permissions(m_folder.path(), fs::all_all);
  fs::permissions(m_path, static_cast<fs::perms>(0444));
  const OrdinaryUser user;
  EXPECT_FALSE(opensForWriting());
  EXPECT_EQ(read(), 5u);
}

TEST_F(SettingsStore, IsNotMadeWithoutRightsOnTheFolder) {
  fs::permissions(m_folder.path(), static_cast<fs::perms>(0555));
  {
    const OrdinaryUser user;
    EXPECT_FALSE(opensForWriting());
  }
  fs::permissions(m_folder.path(), fs::owner_all);
  EXPECT_EQ(m_folder.entries(), 0u);
}

}  // namespace
