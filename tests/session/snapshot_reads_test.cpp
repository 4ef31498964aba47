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

// Single objects

class SingleReads : public SessionReads {
 protected:
  /// Two objects of one id in each list, and one of another.
  SingleReads() {
    for (const VEX_HANDLE handle : {3u, 1u, 2u}) {
      const std::wstring id = handle == 3 ? L"another" : L"id";
      picture().raids.push_back(object<Raid>(handle, id));
      picture().controllers.push_back(object<Controller>(handle, id));
      picture().arrays.push_back(object<Array>(handle, id));
      picture().endDevices.push_back(object<EndDevice>(handle, id));
      picture().ports.push_back(object<Port>(handle, id));
      picture().volumes.push_back(complete<Volume>().handle(handle).id(id).name(L"Name of " + id).build());
    }
    taken();
  }

  template <class Find>
  void expectFirstOf(Find find) {
    for (int round = 0; round < 2; ++round) {  // the index is made, and then used
      EXPECT_EQ(find(L"id")->handle(), 1u);
      EXPECT_EQ(find(L"another")->handle(), 3u);
      for (const wchar_t* const unknown : {L"", L"i", L"id ", L"ID"}) EXPECT_FALSE(find(unknown));
    }
  }
};

TEST_F(SingleReads, FindTheFirstWithTheWholeId) {
  expectFirstOf([this](const std::wstring& id) { return m_session.findRaid(id); });
  expectFirstOf([this](const std::wstring& id) { return m_session.findController(id); });
  expectFirstOf([this](const std::wstring& id) { return m_session.findArray(id); });
  expectFirstOf([this](const std::wstring& id) { return m_session.findEndDevice(id); });
  expectFirstOf([this](const std::wstring& id) { return m_session.findPort(id); });
  expectFirstOf([this](const std::wstring& id) { return m_session.findVolume(id); });
}

TEST_F(SingleReads, FindAVolumeByItsName) {
  EXPECT_EQ(m_session.findVolumeByName(L"Name of id")->handle(), 1u);
  EXPECT_FALSE(m_session.findVolumeByName(L"id"));
}

TEST_F(SingleReads, FindSeveralDevicesInTheOrderAsked) {
  const auto found = m_session.findEndDevices({L"another", L"unknown", L"id", L"another"});
  ASSERT_EQ(found.size(), 4u);
  EXPECT_EQ(found[0]->handle(), 3u);
  EXPECT_FALSE(found[1]);
  EXPECT_EQ(found[2]->handle(), 1u);
  EXPECT_EQ(found[3]->handle(), 3u);
}

TEST_F(SingleReads, FindWhatTheNextPictureHas) {
  EXPECT_TRUE(m_session.findVolume(L"another"));
  picture().volumes = {object<Volume>(4, L"new")};
  taken();
  EXPECT_FALSE(m_session.findVolume(L"another"));
  EXPECT_EQ(m_session.findVolume(L"new")->handle(), 4u);
}

TEST_F(SingleReads, AreAnsweredFromAPictureThatIsHeld) {
  const Picture held = m_session.picture();
  picture() = {};
  taken();
  EXPECT_EQ(held->volumesById.find(L"another")->handle(), 3u);
  EXPECT_EQ(m_session.picture()->volumesById.find(L"another"), nullptr);
}

TEST_F(SessionReads, GiveWhatNamesAnArrayInTheOrderOfTheFullList) {
  picture().arrays = {object<Array>(1, L"array")};
  for (const VEX_HANDLE handle : {12u, 11u, 13u}) {
    const VEX_HANDLE array = handle == 13 ? 0 : 1;
    const std::wstring id = std::to_wstring(handle);
    picture().endDevices.push_back(complete<EndDevice>().handle(handle).id(id).arrayHandle(array).build());
    picture().volumes.push_back(complete<Volume>().handle(handle).id(id).arrayHandle(array).build());
  }
  taken();
  EXPECT_THAT(idsOf(m_session.getArrayEndDevices(L"array")), ElementsAre(L"11", L"12"));
  EXPECT_THAT(idsOf(m_session.getArrayVolumes(L"array")), ElementsAre(L"11", L"12"));
  EXPECT_THAT(idsOf(m_session.getArrayEndDevices(L"")), ElementsAre(L"13")) << "those in no array";
  EXPECT_THAT(m_session.getArrayVolumes(L"unknown"), IsEmpty());
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

TEST_F(ReadsUnderAController, FindTheFirstControllerOfAVolume) {
  EXPECT_EQ(m_session.findControllerOfVolume(L"4")->id(), L"1");
  EXPECT_EQ(m_session.findControllerOfVolume(L"10")->id(), L"1");
}

TEST_F(ReadsUnderAController, FailForAVolumeBehindAControllerWithoutAnEntry) {
  EXPECT_EQ(outOfRangeFrom([this] { m_session.findControllerOfVolume(L"11"); }), kUnknownKey);
  picture().controllers.pop_back();
  taken();
  EXPECT_FALSE(m_session.findControllerOfVolume(L"11"));
  EXPECT_FALSE(m_session.findControllerOfVolume(L"unheard of")) << "the full list does not have it";
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
