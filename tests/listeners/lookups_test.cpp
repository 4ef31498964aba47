#include <gmock/gmock.h>

#include "arrays_listener.h"
#include "controllers_listener.h"
#include "disks_listener.h"
#include "listeners/volumes_listener_fixture.h"
#include "raids_listener.h"

// Objects are found by their ids before and after an action, and named to the library by their handles.

namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr VEX_HANDLE kFirstHigh = 0x80000000;
constexpr VEX_HANDLE kLast = 0xFFFFFFFF;

using DiskLookUps = ListenerTest<DisksListener>;

TEST_F(DiskLookUps, GoByIdWhenTheHandlesHaveChangedPlaces) {
  m_session.endDevices = {aDisk(L"40").handle(1), aDisk(L"41").handle(2)};
  m_session.duringAction = [this] {
    m_session.disk(L"40").handle(2).usage(DiskUsage::OFFLINE_ARRAY);
    m_session.disk(L"41").handle(1).usage(DiskUsage::SPARE);
  };
  EXPECT_EQ(put("41/clear"), "diskId = \"41\", usage = \"SPARE\"");
  EXPECT_THAT(m_session.actions, ElementsAre("clearMetadata(handle 2)"));
}

TEST_F(DiskLookUps, TakeHandlesOfTheWholeRange) {
  m_session.endDevices = {aDisk(L"40").handle(kFirstHigh), aDisk(L"41").handle(kLast)};
  for (const char* const disk : {"40", "41"}) {
    const std::string path = disk;
    put(path + "/clear");
    put(path + "/spare", body({{"action", "MARK"}}));
    put(path + "/spare", body({{"action", "UNMARK"}}));
    put(path + "/marknormal");
    put(path + "/resetsmart");
  }
  std::vector<std::string> expected;
  for (const char* const handle : {"handle 2147483648", "handle 4294967295"}) {
    const std::string named = handle;
    for (const std::string& action :
         {"clearMetadata(" + named + ")", "markAsSpare(" + named + ", handle 0)",
          "unmarkAsSpare(" + named + ")", "markAsNormal(" + named + ")", "resetSmartEvent(" + named + ")"}) {
      expected.push_back(action);
    }
  }
  EXPECT_EQ(m_session.actions, expected);
}

TEST_F(DiskLookUps, LetADeviceThatIsNoDiskBeUnmarked) {
  m_session.endDevices = {aDisk(L"41").deviceType(DeviceType::NON_STORAGE)};
  EXPECT_EQ(put("41/spare", body({{"action", "UNMARK"}})), "diskId = \"41\"");
  EXPECT_THAT(m_session.actions, ElementsAre("unmarkAsSpare(handle 1041)"));
}

using ArrayLookUps = ListenerTest<ArraysListener>;

TEST_F(ArrayLookUps, GoByIdWhenTheHandlesHaveChangedPlaces) {
  m_session.arrays = {anArray(L"21").handle(kFirstHigh).writeCachePolicy(WriteCacheState::OFF),
                      anArray(L"22").handle(kLast).writeCachePolicy(WriteCacheState::OFF)};
  m_session.duringAction = [this] {
    m_session.array(L"21").handle(kLast);
    m_session.array(L"22").handle(kFirstHigh).writeCachePolicy(WriteCacheState::ON);
  };
  EXPECT_EQ(put("22/writecache", body({{"state", "ENABLED"}})),
            "arrayId = \"22\", writeCachePolicy = \"ON\"");
  EXPECT_THAT(m_session.actions, ElementsAre("setWriteCacheState(handle 4294967295, ENABLED)"));
}

TEST_F(ArrayLookUps, TakeHandlesOfTheWholeRange) {
  m_session.arrays = {anArray(L"21").handle(kFirstHigh), anArray(L"22").handle(kLast)};
  m_session.endDevices = {aDisk(L"51")};
  put("21", body({{"disks", list({"51"})}}));
  put("22", body({{"disks", list({"51"})}}));
  EXPECT_THAT(m_session.actions,
              ElementsAre("addDisks(handle 2147483648, disks 51)", "addDisks(handle 4294967295, disks 51)"));
}

using ControllerLookUps = ListenerTest<ControllersListener>;

TEST_F(ControllerLookUps, GoByIdWhenTheHandlesHaveChangedPlaces) {
  m_session.controllers = {aController(L"11").handle(kFirstHigh), aController(L"12").handle(kLast)};
  m_session.duringAction = [this] {
    m_session.controller(L"11").handle(kLast);
    m_session.controller(L"12").handle(kFirstHigh).rohi(true);
  };
  EXPECT_EQ(put("12/rohi", body({{"state", "ENABLED"}})), "controllerId = \"12\", state = \"ENABLED\"");
  EXPECT_THAT(m_session.actions, ElementsAre("setRohiState(handle 4294967295, ENABLED)"));
}

TEST_F(ControllerLookUps, ListHighHandlesBehindLowOnes) {
  const auto nvme = [](const wchar_t* id, VEX_HANDLE handle) {
    return aController(id).type(ControllerType::NVMe).handle(handle);
  };
  m_session.controllers = {nvme(L"11", kLast), nvme(L"12", kFirstHigh), nvme(L"13", 0x7FFFFFFF)};
  EXPECT_EQ(get(""), forms({m_session.controllers[2], m_session.controllers[1], m_session.controllers[0]}));
}

using RaidLookUps = ListenerTest<RaidsListener>;

TEST_F(RaidLookUps, ListTheControllersOfAnEngineInTheSessionsOrder) {
  m_session.raids = {aRaid(L"72"), aRaid(L"71")};
  m_session.controllers = {aController(L"13").onRaid(L"71"), aController(L"12").onRaid(L"72"),
                           aController(L"11").onRaid(L"71")};
  EXPECT_EQ(get("71/controllers"), forms({m_session.controllers[0], m_session.controllers[2]}));
}

class VolumeLookUps : public VolumesListenerTest {};

TEST_F(VolumeLookUps, GoByIdWhenTheHandlesHaveChangedPlaces) {
  m_session.volume(L"5").handle(kFirstHigh);
  m_session.volume(L"7").handle(kLast);
  m_session.duringAction = [this] {
    m_session.volume(L"5").handle(kLast).state(VolumeState::FAILED);
    m_session.volume(L"7").handle(kFirstHigh).state(VolumeState::INITIALIZING);
  };
  EXPECT_EQ(put("7/init"), "state = \"INITIALIZING\", volumeId = \"7\"");
  EXPECT_THAT(m_session.actions, SizeIs(1));
}

TEST_F(VolumeLookUps, AskTheFirstOfTwoControllersThatHoldTheVolume) {
  m_session.controllerVolumes = {{L"11", {L"5", L"7"}}, {L"12", {L"7"}}};
  const auto setPolicy = [this] { return put("7/cachepolicy", body({{"cachePolicy", "OFF"}})); };
  expectRefused(setPolicy(), "NOT_SUPPORTED", "This volume does not support cache policy");
  std::swap(m_session.controllers[0], m_session.controllers[1]);
  setPolicy();
  EXPECT_THAT(m_session.actions, SizeIs(1));
}

TEST_F(VolumeLookUps, CompareADiskForTheRebuildWithTheVolumesSectorSizeWhateverThatIs) {
  m_session.volume(L"7").sectorSize(4096);
  const auto rebuild = [this] { return put("7/rebuild", body({{"diskId", "43"}})); };
  expectRefused(rebuild(), "NOT_SUPPORTED",
                "Cannot rebuild the volume using a disk with block size different from source disks");
  m_session.disk(L"43").sectorSize(4096);
  rebuild();
  EXPECT_THAT(m_session.actions, ElementsAre("rebuild(volume 7, disk 43)"));
}

}  // namespace
