#include <algorithm>

#include "simulator/workbench_fixture.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

// What outlives the library: the state file, and what the environment says.

namespace {

constexpr VEX_STATUS kOk = VEX_STATUS_SUCCESS;

/// The library started by its environment, with files in a folder of the test's own.
class Kept : public Workbench {
 protected:
  void SetUp() override {
    write("scenario.json", kWorkbench);
    setVariable("VEXL2_SCENARIO", path("scenario.json"));
    setVariable("VEXL2_STATE", path("state.json"));
    ASSERT_EQ(VexSimSetClockSpeed(0), kOk);
    begin();
  }

  void TearDown() override {
    Workbench::TearDown();
    unsetVariable("VEXL2_SCENARIO");
    unsetVariable("VEXL2_STATE");
    unsetVariable("VEXL2_CLOCK_SPEED");
  }

  std::string path(const std::string& name) const { return (m_folder / name).string(); }

  void write(const std::string& name, const std::string& text) const { writeText(path(name), text); }

  std::string read(const std::string& name) const { return readText(path(name)); }

  void begin() {
    ASSERT_EQ(VexInitialize(), kOk);
    openSession();
  }

  void restart() {
    ASSERT_EQ(VexFinalize(), kOk);
    begin();
  }

 private:
  TemporaryFolder m_folder;
};

TEST_F(Kept, AChangeOutlivesTheLibrary) {
  ASSERT_EQ(VexVolumeRename(volumeHandle("five"), "renamed"), kOk);
  const VEX_HANDLE handle = volumeHandle("five");
  restart();
  EXPECT_STREQ(volume("volume five").name, "renamed");
  EXPECT_EQ(volumeHandle("five"), handle);
}

TEST_F(Kept, TheWholeMachineOutlivesTheLibrary) {
  ASSERT_EQ(VexSimPullDisk("a2"), kOk);
  ASSERT_EQ(VexSimInsertDisk("a2"), kOk);
  pass(1000);
  const std::string before = machine();
  restart();
  EXPECT_EQ(machine(), before);
}

TEST_F(Kept, WorkGoesOnWhereItStood) {
  ASSERT_EQ(VexVolumeVerify(volumeHandle("five"), 0), kOk);
  pass(2000);
  restart();
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_VERIFYING);
  pass(2999);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_VERIFYING);
  pass(1);
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_NORMAL);
}

TEST_F(Kept, WrongPasswordsAreRemembered) {
  VEX_UNLOCK_PARAMS params = {};
  std::strcpy(params.password, "guess");
  for (int attempt = 0; attempt < 5; ++attempt) {
    EXPECT_EQ(VexDiskUnlock(diskHandle("locked"), &params), VEX_STATUS_WRONG_PASSWORD);
  }
  restart();
  EXPECT_EQ(VexDiskUnlock(diskHandle("locked"), &params), VEX_STATUS_UNLOCK_LIMIT_REACHED);
}

TEST_F(Kept, AChangeIsInTheJournalBeforeItIsAnsweredAndInTheFileAtTheEnd) {
  ASSERT_EQ(VexVolumeRename(volumeHandle("five"), "renamed"), kOk);
  EXPECT_NE(read("state.json.journal").find("\"renamed\""), std::string::npos);
  EXPECT_EQ(read("state.json").find("\"renamed\""), std::string::npos);
  restart();
  EXPECT_NE(read("state.json").find("\"renamed\""), std::string::npos);
  EXPECT_FALSE(boost::filesystem::exists(path("state.json.journal")));
}

TEST_F(Kept, WhatChangesNothingIsNotWritten) {
  ASSERT_EQ(VexVolumeRename(volumeHandle("five"), "five"), kOk);
  ASSERT_EQ(VexRescan(), kOk);
  EXPECT_FALSE(boost::filesystem::exists(path("state.json.journal")));
}

TEST_F(Kept, WhatHappensByItselfIsKept) {
  ASSERT_EQ(VexVolumeInitialize(volumeHandle("five")), kOk);
  pass(5000);
  const std::string journal = read("state.json.journal");
  EXPECT_EQ(std::count(journal.begin(), journal.end(), '\n'), 3) << "the digest, the beginning and the end";
}

TEST_F(Kept, AScenarioLoadedByHandIsKept) {
  ASSERT_EQ(VexSimLoadText(R"({"engines": [{"id": "mine"}]})"), kOk);
  EXPECT_NE(read("state.json").find("\"mine\""), std::string::npos);
}

TEST_F(Kept, AStateFileThatIsBrokenStopsTheStart) {
  ASSERT_EQ(VexFinalize(), kOk);
  write("state.json", "{\"colour\": 1}");
  testing::internal::CaptureStderr();
  EXPECT_EQ(VexInitialize(), VEX_STATUS_FAILED);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "VEXL2: " + path("state.json") +
                ": colour: unknown key; mend it, or move it away to begin with a new machine\n");
  EXPECT_EQ(read("state.json"), "{\"colour\": 1}") << "it may be mended";
  boost::filesystem::remove(path("state.json"));
  begin();
}

TEST_F(Kept, AScenarioThatIsNotThereStopsTheStart) {
  ASSERT_EQ(VexFinalize(), kOk);
  setVariable("VEXL2_SCENARIO", "/no/such/file.json");
  unsetVariable("VEXL2_STATE");
  testing::internal::CaptureStderr();
  EXPECT_EQ(VexInitialize(), VEX_STATUS_FAILED);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "VEXL2: /no/such/file.json: cannot be read\n");
  unsetVariable("VEXL2_SCENARIO");
  begin();
  EXPECT_EQ(handles(VexGetControllerHandles).size(), 4U) << "the embedded scenario";
}

TEST_F(Kept, AClockSpeedThatIsNoneStopsTheStart) {
  ASSERT_EQ(VexFinalize(), kOk);
  setVariable("VEXL2_CLOCK_SPEED", "fast");
  testing::internal::CaptureStderr();
  EXPECT_EQ(VexInitialize(), VEX_STATUS_FAILED);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "VEXL2: VEXL2_CLOCK_SPEED: \"fast\" is no whole number up to 999999\n");
  unsetVariable("VEXL2_CLOCK_SPEED");
  begin();
}

TEST_F(Kept, WithoutAFolderTheMachineStartsAndRefusesWhatItCannotKeep) {
  const VEX_HANDLE five = volumeHandle("five");
  ASSERT_EQ(VexFinalize(), kOk);
  setVariable("VEXL2_STATE", path("no such folder/state.json"));
  testing::internal::CaptureStderr();
  begin();
  const std::string before = machine();
  VEX_HANDLE event = 0;
  ASSERT_EQ(VexGetEventHandle(&event), kOk);
  EXPECT_EQ(VexVolumeRename(five, "renamed"), VEX_STATUS_FAILED);
  EXPECT_EQ(VexSimFailDisk("a0"), VEX_STATUS_FAILED);
  EXPECT_EQ(VexVolumeDelete(five), VEX_STATUS_FAILED);
  EXPECT_EQ(VexEventWait(0, event), VEX_STATUS_TIMEOUT) << "nothing has changed";
  EXPECT_EQ(machine(), before);
  const std::string said = testing::internal::GetCapturedStderr();
  EXPECT_EQ(said.find("VEXL2: " + path("no such folder/state.json.lock") + ": cannot be locked: "), 0U)
      << said;
  EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
  char text[256] = "";
  EXPECT_EQ(VexSimCheck(text, sizeof(text)), VEX_STATUS_INTERNAL_ERROR);
  EXPECT_NE(std::string(text).find("is not kept"), std::string::npos) << text;
  unsetVariable("VEXL2_STATE");
  restart();
}

}  // namespace
