#include "read_interface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/given_reader.h"
#include "support/model_samples.h"
#include "support/session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What an unknown key says.
constexpr char kUnknownKey[] = "invalid map<K, T> key";

class SessionReads : public SessionTest {
 protected:
  SessionReads() {
    GivenReader::picture = {};
    GivenReader::asked.clear();
  }

  static MirnSnapshot& picture() { return GivenReader::picture; }

  /// The session takes over what the test has put in the picture.
  void taken() {
    if (!picture().version) picture().version = std::make_shared<Version>(complete<Version>().build());
    m_session.refresh(false);
    ASSERT_THAT(m_log.take(), IsEmpty());
  }

  template <class Model>
  static Model object(VEX_HANDLE handle, const std::wstring& id) {
    return complete<Model>().handle(handle).id(id).build();
  }

  template <class Read>
  static std::string outOfRangeFrom(Read read) {
    try {
      read();
    } catch (const std::out_of_range& failure) {
      return failure.what();
    }
    return "no failure";
  }

  template <class Object>
  static std::vector<std::wstring> idsOf(const std::vector<Object>& objects) {
    std::vector<std::wstring> ids;
    for (const Object& object : objects) ids.push_back(object.id());
    return ids;
  }
};

// The reader's part

TEST_F(SessionReads, ComeFromOneReaderPerPicture) {
  picture().controllers = {object<Controller>(12, L"12"), object<Controller>(11, L"11")};
  picture().raids = {object<Raid>(2, L"2"), object<Raid>(1, L"1")};
  taken();
  EXPECT_THAT(GivenReader::asked,
              ElementsAre("open()", "getRaids()", "getControllers()", "getArrays(0, 0, \"\")",
                          "getEndDevices(0, 0, \"\")", "getPorts(0, 0)", "getVolumes(0, 0, \"\")",
                          "getVersion()", "getControllerArrays(12 11)", "getControllerPorts(12 11)",
                          "getControllerVolumes(12 11)", "getRaidLevels(2 1)", "close()", "deleted"));
}

TEST_F(SessionReads, DeleteTheReaderOfAFailedPictureToo) {
  m_session.refresh(false);
  EXPECT_EQ(GivenReader::asked.back(), "deleted");
  EXPECT_THAT(m_log.take(),
              ElementsAre("Warning: Ordan (R) Mirn Plug-In: Error occurred while taking a snapshot"));
}

// Whole lists

TEST_F(SessionReads, GiveWholeListsInTheOrderOfTheHandles) {
  picture().raids = {object<Raid>(2, L"raid-2"), object<Raid>(1, L"raid-1")};
  picture().controllers = {object<Controller>(2, L"controller-2"), object<Controller>(1, L"controller-1")};
  picture().arrays = {object<Array>(2, L"array-2"), object<Array>(1, L"array-1")};
  picture().endDevices = {object<EndDevice>(2, L"disk-2"), object<EndDevice>(1, L"disk-1")};
  picture().ports = {object<Port>(2, L"port-2"), object<Port>(1, L"port-1")};
  picture().volumes = {object<Volume>(2, L"volume-2"), object<Volume>(1, L"volume-1")};
  taken();
  EXPECT_THAT(idsOf(m_session.getRaids()), ElementsAre(L"raid-1", L"raid-2"));
  EXPECT_THAT(idsOf(m_session.getControllers()), ElementsAre(L"controller-1", L"controller-2"));
  EXPECT_THAT(idsOf(m_session.getArrays()), ElementsAre(L"array-1", L"array-2"));
  EXPECT_THAT(idsOf(m_session.getEndDevices()), ElementsAre(L"disk-1", L"disk-2"));
  EXPECT_THAT(idsOf(m_session.getPorts()), ElementsAre(L"port-1", L"port-2"));
  EXPECT_THAT(idsOf(m_session.getVolumes()), ElementsAre(L"volume-1", L"volume-2"));
}

TEST_F(SessionReads, MakeNoLibraryCall) {
  taken();
  m_library.clearCalls();
  GivenReader::asked.clear();
  m_session.getRaids();
  m_session.getControllers();
  m_session.getArrays();
  m_session.getEndDevices();
  m_session.getPorts();
  m_session.getVolumes();
  m_session.getVersion();
  m_session.getServiceState();
  m_session.getVolumesInProgress();
  m_session.getLocateTimeout();
  EXPECT_THAT(m_library.calls(), IsEmpty());
  EXPECT_THAT(GivenReader::asked, IsEmpty());
}

// What hangs under a controller

class ReadsUnderAController : public SessionReads {
 protected:
  ReadsUnderAController() {
    picture().controllers = {object<Controller>(1, L"1"), object<Controller>(2, L"2"),
                             object<Controller>(3, L"3")};
    for (const VEX_HANDLE handle : {4u, 7u, 10u}) {
      // Texts sort otherwise than handles.
      const std::wstring id = std::to_wstring(handle);
      picture().arrays.push_back(object<Array>(handle, id));
      picture().ports.push_back(object<Port>(handle, id));
      picture().volumes.push_back(object<Volume>(handle, id));
    }
    const MirnSnapshot::IdLists lists = {{L"1", {L"7", L"10", L"4"}}, {L"2", {L"10", L"unheard of"}}};
    picture().controllerArrays = lists;
    picture().controllerPorts = lists;
    picture().controllerVolumes = lists;
    taken();
  }

  template <class Read>
  static void expectUnknownController(Read read) {
    try {
      read();
      FAIL() << "no failure";
    } catch (const ListenerException& failure) {
      EXPECT_STREQ(failure.getErrorId(), "OBJECT_NOT_FOUND");
      EXPECT_STREQ(failure.what(), "Controller identifier not found");
    }
  }
};

TEST_F(ReadsUnderAController, KeepTheOrderOfTheFullList) {
  EXPECT_THAT(idsOf(m_session.getControllerArrays(L"1")), ElementsAre(L"4", L"7", L"10"));
  EXPECT_THAT(idsOf(m_session.getControllerPorts(L"1")), ElementsAre(L"4", L"7", L"10"));
  EXPECT_THAT(idsOf(m_session.getControllerVolumes(L"1")), ElementsAre(L"4", L"7", L"10"));
}

TEST_F(ReadsUnderAController, LeaveOutWhatTheFullListDoesNotHave) {
  EXPECT_THAT(idsOf(m_session.getControllerArrays(L"2")), ElementsAre(L"10"));
  EXPECT_THAT(idsOf(m_session.getControllerPorts(L"2")), ElementsAre(L"10"));
  EXPECT_THAT(idsOf(m_session.getControllerVolumes(L"2")), ElementsAre(L"10"));
}

TEST_F(ReadsUnderAController, FailForAnUnknownController) {
  expectUnknownController([this] { m_session.getControllerArrays(L"9"); });
  expectUnknownController([this] { m_session.getControllerPorts(L"9"); });
  expectUnknownController([this] { m_session.getControllerVolumes(L"9"); });
}

TEST_F(ReadsUnderAController, FailOtherwiseForAControllerWithoutAnEntry) {
  EXPECT_EQ(outOfRangeFrom([this] { m_session.getControllerArrays(L"3"); }), kUnknownKey);
  EXPECT_EQ(outOfRangeFrom([this] { m_session.getControllerPorts(L"3"); }), kUnknownKey);
  EXPECT_EQ(outOfRangeFrom([this] { m_session.getControllerVolumes(L"3"); }), kUnknownKey);
}

TEST_F(ReadsUnderAController, FindAControllerByItsWholeId) {
  expectUnknownController([this] { m_session.getControllerArrays(L""); });
  expectUnknownController([this] { m_session.getControllerArrays(L"1 "); });
}

// RAID levels

class RaidLevelReads : public SessionReads {
 protected:
  RaidLevelReads() {
    picture().raids = {object<Raid>(1, L"61")};
    for (const RaidLevel level : {RaidLevel::RAID_10, RaidLevel::RAID_0, RaidLevel::RAID_INVALID}) {
      picture().raidLevels[L"61"].emplace(level, complete<RaidLevelSupport>().raidLevel(level).build());
    }
    picture().raidLevels[L"62"];
    taken();
  }
};

TEST_F(RaidLevelReads, GiveTheLevelsInAscendingOrder) {
  std::vector<RaidLevel> levels;
  for (const RaidLevelSupport& level : m_session.getRaidLevels(L"61")) levels.push_back(level.raidLevel());
  EXPECT_THAT(levels, ElementsAre(RaidLevel::RAID_INVALID, RaidLevel::RAID_0, RaidLevel::RAID_10));
  EXPECT_THAT(m_session.getRaidLevels(L"62"), IsEmpty());
}

TEST_F(RaidLevelReads, GiveOneLevel) {
  EXPECT_EQ(m_session.getRaidLevel(L"61", RaidLevel::RAID_10).raidLevel(), RaidLevel::RAID_10);
}

TEST_F(RaidLevelReads, FailForWhatTheEngineDoesNotHave) {
  EXPECT_EQ(outOfRangeFrom([this] { m_session.getRaidLevels(L"9"); }), kUnknownKey);
  EXPECT_EQ(outOfRangeFrom([this] { m_session.getRaidLevel(L"9", RaidLevel::RAID_0); }), kUnknownKey);
  EXPECT_EQ(outOfRangeFrom([this] { m_session.getRaidLevel(L"61", RaidLevel::RAID_5); }), kUnknownKey);
}

// Before the first picture

TEST_F(SessionReads, HaveNothingToGiveBeforeTheFirstPicture) {
  EXPECT_THAT(m_session.getRaids(), IsEmpty());
  EXPECT_THAT(m_session.getControllers(), IsEmpty());
  EXPECT_THAT(m_session.getArrays(), IsEmpty());
  EXPECT_THAT(m_session.getEndDevices(), IsEmpty());
  EXPECT_THAT(m_session.getPorts(), IsEmpty());
  EXPECT_THAT(m_session.getVolumes(), IsEmpty());
  EXPECT_THAT(m_session.getVolumesInProgress(), IsEmpty());
  EXPECT_EQ(m_session.getServiceState(), L"NORMAL");
  EXPECT_EQ(outOfRangeFrom([this] { m_session.getRaidLevels(L"61"); }), kUnknownKey);
  EXPECT_THROW(m_session.getControllerArrays(L"1"), ListenerException);
}

TEST_F(SessionReads, HaveNoVersionBeforeTheFirstPicture) {
  EXPECT_EQ(failureOf([this] { m_session.getVersion(); }),
            (Failure{"Mirn_OPERATION_FAILED", "Version is not available yet"}));
  taken();
  EXPECT_EQ(m_session.getVersion().vexVersion(), complete<Version>().build().vexVersion());
}

// Copies

TEST_F(SessionReads, GiveCopies) {
  picture().volumes = {object<Volume>(1, L"1")};
  taken();
  m_session.getVolumes().front().setArrayId(L"changed");
  EXPECT_EQ(m_session.getVolumes().front().arrayId(), L"");
}

}  // namespace
