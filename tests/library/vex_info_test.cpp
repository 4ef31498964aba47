#include "vex_info.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <type_traits>

#include "identifiers.h"
#include "scripted_library/scripted_library.h"
#include "status_text.h"
#include "support/virtual_slot.h"
#include "vex_exception.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class VexInfoTest : public testing::Test {
 protected:
  /// A machine with room in the record of calls for what the test is about: controllers with their RAID
  /// engine, and nothing else.
  void bareMachine() {
    ScriptedMachine machine;
    machine.addRaid(kSataRaid);
    machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, kSataRaid);
    m_library.setMachine(machine);
  }

  void open() {
    m_info->open();
    m_library.clearCalls();
  }

  /// All reads in the order of a snapshot.
  static void readAll(IVexInfo& info) {
    info.open();
    const auto raids = info.getRaids();
    const auto controllers = info.getControllers();
    info.getArrays(0, 0, "");
    info.getEndDevices(0, 0, "");
    info.getPorts(0, 0);
    info.getVolumes(0, 0, "");
    info.getVersion();
    info.getControllerArrays(controllers);
    info.getControllerPorts(controllers);
    info.getControllerVolumes(controllers);
    info.getRaidLevels(raids);
    info.close();
  }

  template <class Read>
  VEX_STATUS statusOf(Read read) {
    try {
      read();
    } catch (const VexException& failure) {
      EXPECT_STREQ(failure.what(), statusToText(failure.status));
      return failure.status;
    }
    return VEX_STATUS_SUCCESS;
  }

  template <class Objects>
  static std::vector<VEX_HANDLE> handlesOf(const Objects& objects) {
    std::vector<VEX_HANDLE> handles;
    handles.reserve(objects.size());
    for (const auto& object : objects) handles.push_back(object.handle());
    return handles;
  }

  static std::wstring idOf(const std::string& uniqueId) { return idFromUniqueId(uniqueId); }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  std::unique_ptr<IVexInfo> m_info = makeVexInfo();
};

// The class itself

TEST(VexInfoClass, IsNeverCopied) {
  EXPECT_TRUE((std::is_base_of_v<NonCopyable, VexInfo>)) << "whatever its members allow";
  EXPECT_FALSE(std::is_copy_constructible_v<VexInfo>);
  EXPECT_FALSE(std::is_copy_assignable_v<VexInfo>);
  EXPECT_FALSE(std::is_move_constructible_v<VexInfo>);
  EXPECT_FALSE(std::is_move_assignable_v<VexInfo>);
}

TEST(VexInfoClass, KeepsTheOrderOfItsOperations) {
  EXPECT_TRUE(std::has_virtual_destructor_v<IVexInfo>);
  EXPECT_EQ(virtualSlot(&IVexInfo::getVersion), 2U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getControllers), 3U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getEndDevices), 4U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getArrays), 5U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getVolumes), 6U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getPorts), 7U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getRaids), 8U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getRaidLevel), 9U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getControllerArrays), 10U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getControllerPorts), 11U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getControllerVolumes), 12U);
  EXPECT_EQ(virtualSlot(&IVexInfo::getRaidLevels), 13U);
  EXPECT_EQ(virtualSlot(&IVexInfo::open), 14U);
  EXPECT_EQ(virtualSlot(&IVexInfo::close), 15U);
}

/// Tells when it is closed, and closes nothing itself.
class TellingInfo : public VexInfo {
 public:
  TellingInfo() : VexInfo(std::make_unique<VexConverter>()) {}
  void close() override { ++closed; }

  int closed = 0;
};

// Session

TEST_F(VexInfoTest, OpenClosesThroughTheOperationThatADerivedClassMayHaveReplaced) {
  TellingInfo info;
  info.open();
  EXPECT_EQ(info.closed, 0);
  info.open();
  EXPECT_EQ(info.closed, 1);
}

TEST_F(VexInfoTest, OpenAndCloseHaveOneCallEach) {
  m_info->open();
  m_info->close();
  EXPECT_THAT(m_library.callTexts(), ElementsAre("VexSessionOpen(out)", "VexSessionClose(1)"));
}

TEST_F(VexInfoTest, OpenClosesASessionThatIsOpenFirst) {
  m_info->open();
  m_info->open();
  EXPECT_THAT(m_library.callTexts(),
              ElementsAre("VexSessionOpen(out)", "VexSessionClose(1)", "VexSessionOpen(out)"));
  EXPECT_EQ(m_library.openSessions(), 1U);
}

TEST_F(VexInfoTest, DestructorClosesAnOpenSession) {
  m_info->open();
  m_info.reset();
  EXPECT_EQ(m_library.openSessions(), 0U);
}

TEST_F(VexInfoTest, DestructorCallsNothingWhenNoSessionIsOpen) {
  m_info->open();
  m_info->close();
  m_library.clearCalls();
  m_info.reset();
  EXPECT_THAT(m_library.callTexts(), IsEmpty());
}

TEST_F(VexInfoTest, RefusedOpenIsRaisedAndLeavesNothingToClose) {
  m_library.answer(onCall("VexSessionOpen"), VEX_STATUS_NO_SESSION_LEFT);
  EXPECT_EQ(statusOf([this] { m_info->open(); }), VEX_STATUS_NO_SESSION_LEFT);
  m_info.reset();
  EXPECT_THAT(m_library.callTexts(), ElementsAre("VexSessionOpen(out)"));
}

TEST_F(VexInfoTest, RefusedCloseIsRaisedAndItsStatusIsWhatTheDestructorCloses) {
  m_info->open();
  m_library.clearCalls();
  m_library.answer(onEveryCall("VexSessionClose"), VEX_STATUS_BUSY);
  EXPECT_EQ(statusOf([this] { m_info->close(); }), VEX_STATUS_BUSY);
  m_info.reset();
  EXPECT_THAT(m_library.callTexts(), ElementsAre("VexSessionClose(1)", "VexSessionClose(23)"));
}

TEST_F(VexInfoTest, OpenGivesUpWhenTheOldSessionCannotBeClosed) {
  m_info->open();
  m_library.clearCalls();
  m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
  EXPECT_EQ(statusOf([this] { m_info->open(); }), VEX_STATUS_FAILED);
  EXPECT_THAT(m_library.callTexts(), ElementsAre("VexSessionClose(1)"));
}

// Enumeration

TEST_F(VexInfoTest, EnumerationAsksForTheNumberAndThenForTheHandles) {
  open();
  m_info->getVolumes(0, 0, "");
  EXPECT_THAT(m_library.callTexts(),
              ElementsAre("VexGetVolumeHandles(1, 0, 0, null, 0)", "VexGetVolumeHandles(1, 0, 0, out, 2)",
                          "VexGetVolumeInfo(1, 51, out)", "VexGetVolumeInfo(1, 52, out)"));
}

TEST_F(VexInfoTest, EnumerationOfNothingIsAskedTwiceWithoutABuffer) {
  m_library.setMachine(ScriptedMachine());
  open();
  EXPECT_THAT(m_info->getVolumes(0, 0, ""), IsEmpty());
  EXPECT_THAT(m_library.callTexts(),
              ElementsAre("VexGetVolumeHandles(1, 0, 0, null, 0)", "VexGetVolumeHandles(1, 0, 0, null, 0)"));
}

TEST_F(VexInfoTest, ConfigurationThatGrowsBetweenTheTwoCallsFailsTheRead) {
  open();
  m_library.before(onCall("VexGetVolumeHandles", 2), [this](const ScriptedCall&) {
    m_library.change([](ScriptedMachine& machine) { machine.addVolume(53, "New", kArray, 1); });
  });
  try {
    m_info->getVolumes(0, 0, "");
    FAIL() << "a grown configuration was read";
  } catch (const VexException& failure) {
    EXPECT_EQ(failure.status, VEX_STATUS_NOT_ENOUGH_ITEMS);
    EXPECT_STREQ(failure.what(), "Not enough items (disks, etc) have been specified");
  }
  EXPECT_THAT(m_library.callTexts(), SizeIs(2));
}

TEST_F(VexInfoTest, ConfigurationThatGrowsFromNothingFailsTheRead) {
  m_library.setMachine(ScriptedMachine());
  open();
  m_library.before(onCall("VexGetRaidInfoHandles", 2), [this](const ScriptedCall&) {
    m_library.change([](ScriptedMachine& machine) { machine.addRaid(kSataRaid); });
  });
  EXPECT_EQ(statusOf([this] { m_info->getRaids(); }), VEX_STATUS_NOT_ENOUGH_ITEMS);
}

TEST_F(VexInfoTest, ConfigurationThatShrinksGivesTheNumberReturnedLast) {
  open();
  m_library.before(onCall("VexGetVolumeHandles", 2), [this](const ScriptedCall&) {
    m_library.change([](ScriptedMachine& machine) { machine.volumes.remove(kSystemVolume); });
  });
  EXPECT_THAT(handlesOf(m_info->getVolumes(0, 0, "")), ElementsAre(kDataVolume));
}

TEST_F(VexInfoTest, ConfigurationThatShrinksToNothingGivesNothing) {
  open();
  m_library.before(onCall("VexGetVolumeHandles", 2), [this](const ScriptedCall&) {
    m_library.change([](ScriptedMachine& machine) { machine.volumes.clear(); });
  });
  EXPECT_THAT(m_info->getVolumes(0, 0, ""), IsEmpty());
}

// The reads, call by call

TEST_F(VexInfoTest, VersionNeedsNoSession) {
  EXPECT_EQ(m_info->getVersion().vexVersion(), L"8.7.6.5432");
  EXPECT_THAT(m_library.callTexts(), ElementsAre("VexGetSystemInfo(out)"));
}

TEST_F(VexInfoTest, SystemWithoutControllersYieldsAnEmptyList) {
  m_library.setMachine(ScriptedMachine());
  open();
  EXPECT_THAT(m_info->getControllers(), IsEmpty());
}

TEST_F(VexInfoTest, ControllersAreReadFirstAndThenEachWithItsDevicesAndTheRaidRecords) {
  ScriptedMachine machine;
  machine.addRaid(kSataRaid);
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, kSataRaid);
  machine.addController(kLyx, VEX_CONTROLLER_TYPE_LYX, kSataRaid);
  machine.addDisk(kFree1, kSata);
  m_library.setMachine(machine);
  open();
  m_info->getControllers();
  EXPECT_THAT(m_library.callTexts(),
              ElementsAre("VexGetControllerHandles(1, 0, 0, null, 0)",
                          "VexGetControllerHandles(1, 0, 0, out, 2)", "VexGetControllerInfo(1, 11, out)",
                          "VexGetControllerInfo(1, 12, out)", "VexGetEndDeviceHandles(1, 2, 11, null, 0)",
                          "VexGetEndDeviceHandles(1, 2, 11, out, 1)", "VexGetEndDeviceInfo(1, 23, out)",
                          "VexGetRaidInfoHandles(1, null, 0)", "VexGetRaidInfoHandles(1, out, 1)",
                          "VexGetRaidInfo(1, 1, out)", "VexGetEndDeviceHandles(1, 2, 12, null, 0)",
                          "VexGetEndDeviceHandles(1, 2, 12, null, 0)", "VexGetRaidInfoHandles(1, null, 0)",
                          "VexGetRaidInfoHandles(1, out, 1)", "VexGetRaidInfo(1, 1, out)"));
}

TEST_F(VexInfoTest, ControllerWithoutRaidCapabilityAsksForNoRaidRecord) {
  ScriptedMachine machine;
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0);
  m_library.setMachine(machine);
  open();
  EXPECT_THAT(m_info->getControllers(), SizeIs(1));
  EXPECT_THAT(m_library.callTexts(), testing::Not(testing::Contains(testing::HasSubstr("Raid"))));
}

TEST_F(VexInfoTest, ControllerCountsItsDisksAndAllItsDevices) {
  m_library.change([](ScriptedMachine& machine) {
    machine.endDevices.at(kFree1).deviceType = VEX_DEVICE_TYPE_NON_STORAGE;
    machine.endDevices.at(kFree2).deviceType = 77;
  });
  open();
  const auto controllers = m_info->getControllers();
  EXPECT_THAT(handlesOf(controllers), ElementsAre(kSata, kLyx));
  EXPECT_EQ(controllers[0].availableDisks(), 2U);
  EXPECT_EQ(controllers[0].availableDevices(), 4U);
  EXPECT_EQ(controllers[1].availableDisks(), 3U);
  EXPECT_EQ(controllers[1].availableDevices(), 3U);
}

TEST_F(VexInfoTest, ControllerWhoseRaidHandleNamesNoRecordFailsTheReadWithStatus15) {
  m_library.change([](ScriptedMachine& machine) { machine.controllers.at(kLyx).raidInfoHandle = 99; });
  open();
  try {
    m_info->getControllers();
    FAIL() << "a controller without its RAID engine was read";
  } catch (const VexException& failure) {
    EXPECT_EQ(failure.status, 15U);
    EXPECT_STREQ(failure.what(), "Function failed to complete");
  }
}

TEST_F(VexInfoTest, ControllerWithARaidHandleOnAMachineWithoutRaidFailsTheReadWithStatus15) {
  m_library.change([](ScriptedMachine& machine) { machine.raids.clear(); });
  open();
  EXPECT_EQ(statusOf([this] { m_info->getControllers(); }), 15U);
}

TEST_F(VexInfoTest, EndDevicesAreReadBeforeThePhysOfTheSameScope) {
  ScriptedMachine machine;
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0);
  machine.addDisk(kFree1, kSata);
  machine.addPhy(phyOf(kFree1), kFree1);
  m_library.setMachine(machine);
  open();
  m_info->getEndDevices(kSata, VEX_SCOPE_CONTROLLER, "");
  EXPECT_THAT(
      m_library.callTexts(),
      ElementsAre("VexGetEndDeviceHandles(1, 2, 11, null, 0)", "VexGetEndDeviceHandles(1, 2, 11, out, 1)",
                  "VexGetEndDeviceInfo(1, 23, out)", "VexGetPhyHandles(1, 2, 11, null, 0)",
                  "VexGetPhyHandles(1, 2, 11, out, 1)", "VexGetPhyInfo(1, 33, out)"));
}

TEST_F(VexInfoTest, EndDeviceTakesTheFirstPhyThatNamesIt) {
  m_library.change([](ScriptedMachine& machine) {
    machine.phys.at(phyOf(kFree1)).negotiatedLinkSpeed = VEX_LINK_SPEED_3_GBPS;
    machine.addPhy(99, kFree1);
    machine.phys.remove(phyOf(kFree2));
  });
  open();
  const auto devices = m_info->getEndDevices(0, 0, "");
  EXPECT_THAT(handlesOf(devices),
              ElementsAre(kMember1, kMember2, kFree1, kFree2, kLyxDisk1, kLyxDisk2, kLyxDisk3));
  EXPECT_EQ(devices[2].phyHandle(), phyOf(kFree1));
  EXPECT_EQ(devices[2].negotiatedLinkSpeed(), LinkSpeed::GBPS_3);
  EXPECT_EQ(devices[3].phyHandle(), 0U);
  EXPECT_EQ(devices[3].negotiatedLinkSpeed(), LinkSpeed::UNKNOWN);
}

TEST_F(VexInfoTest, PhyWithoutADeviceGivesItsSpeedToNobody) {
  m_library.change([](ScriptedMachine& machine) {
    machine.addDisk(0, kSata);
    machine.phys.at(phyOf(kFree1)).endDeviceHandle = 0;
    machine.phys.at(phyOf(kFree1)).negotiatedLinkSpeed = VEX_LINK_SPEED_6_GBPS;
  });
  open();
  const auto devices = m_info->getEndDevices(0, 0, "");
  ASSERT_THAT(handlesOf(devices), testing::IsSupersetOf({0U, VEX_HANDLE{kFree1}}));
  for (const EndDevice& device : devices) {
    if (device.handle() != 0 && device.handle() != kFree1) continue;
    EXPECT_EQ(device.phyHandle(), 0U) << "device " << device.handle();
    EXPECT_EQ(device.negotiatedLinkSpeed(), LinkSpeed::UNKNOWN) << "device " << device.handle();
  }
}

TEST_F(VexInfoTest, ControllerWithoutARaidEngineTakesNoneOfHandle0) {
  m_library.change([](ScriptedMachine& machine) {
    machine.addRaid(0);
    machine.controllers.at(kSata).raidInfoHandle = 0;
  });
  open();
  const auto controllers = m_info->getControllers();
  ASSERT_EQ(controllers.front().handle(), kSata);
  EXPECT_EQ(controllers.front().raidHandle(), 0U);
  const auto raidReads = m_library.callTexts();
  EXPECT_EQ(std::count(raidReads.begin(), raidReads.end(), "VexGetRaidInfo(1, 0, out)"), 1)
      << "for the other controller alone";
}

TEST_F(VexInfoTest, FilterOnEndDevicesReturnsAnEmptyListAfterTheSameCalls) {
  open();
  m_info->getEndDevices(0, 0, "");
  const auto unfiltered = textsOf(m_library.takeCalls());
  EXPECT_THAT(m_info->getEndDevices(0, 0, "Model"), IsEmpty());
  EXPECT_EQ(m_library.callTexts(), unfiltered);
}

TEST_F(VexInfoTest, FilterOnArraysKeepsThoseOfExactlyThisName) {
  m_library.change([](ScriptedMachine& machine) {
    machine.addArray(42, "Array_01", {});
    machine.addArray(43, "Array_0", {});
  });
  open();
  EXPECT_THAT(handlesOf(m_info->getArrays(0, 0, "Array_0")), ElementsAre(kArray, 43U));
  EXPECT_THAT(m_info->getArrays(0, 0, "Array"), IsEmpty());
  EXPECT_THAT(m_info->getArrays(0, 0, "array_0"), IsEmpty());
}

TEST_F(VexInfoTest, FilterOnVolumesKeepsThoseOfExactlyThisName) {
  m_library.change(
      [](ScriptedMachine& machine) { setText(machine.volumes.at(kSystemVolume).name, "1234567890123456"); });
  open();
  EXPECT_THAT(handlesOf(m_info->getVolumes(0, 0, "1234567890123456")), ElementsAre(kSystemVolume));
  EXPECT_THAT(m_info->getVolumes(0, 0, "123456789012345"), IsEmpty());
  EXPECT_THAT(m_info->getVolumes(0, 0, "12345678901234567"), IsEmpty());
}

TEST_F(VexInfoTest, FilteredReadAsksForEveryRecord) {
  open();
  m_info->getVolumes(0, 0, "Data");
  EXPECT_THAT(m_library.callTexts(), testing::Contains("VexGetVolumeInfo(1, 51, out)"));
}

TEST_F(VexInfoTest, PortsAndRaidsAreReadInTheOrderOfTheLibrary) {
  ScriptedMachine machine;
  machine.addRaid(kLyxRaid);
  machine.addRaid(kSataRaid);
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0);
  machine.addControllerPort(62, kSata);
  machine.addControllerPort(61, kSata);
  m_library.setMachine(machine);
  open();
  EXPECT_THAT(handlesOf(m_info->getPorts(0, 0)), ElementsAre(62U, 61U));
  EXPECT_THAT(handlesOf(m_info->getRaids()), ElementsAre(kLyxRaid, kSataRaid));
  EXPECT_THAT(m_library.callTexts(),
              ElementsAre("VexGetPortHandles(1, 0, 0, null, 0)", "VexGetPortHandles(1, 0, 0, out, 2)",
                          "VexGetPortInfo(1, 62, out)", "VexGetPortInfo(1, 61, out)",
                          "VexGetRaidInfoHandles(1, null, 0)", "VexGetRaidInfoHandles(1, out, 2)",
                          "VexGetRaidInfo(1, 2, out)", "VexGetRaidInfo(1, 1, out)"));
}

TEST_F(VexInfoTest, PortsAreAllReadBeforeAnyTextOfThemIsRefused) {
  ScriptedMachine machine;
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0);
  for (const VEX_HANDLE port : {61U, 62U, 63U}) machine.addControllerPort(port, kSata);
  setText(machine.ports.at(61).uniqueId, "\xFF");
  m_library.setMachine(machine);
  open();
  EXPECT_THROW(m_info->getPorts(0, 0), std::range_error);
  EXPECT_EQ(m_library.callTexts().back(), "VexGetPortInfo(1, 63, out)");
  m_library.answer(onCall("VexGetPortInfo", 3), VEX_STATUS_BUSY);
  EXPECT_EQ(statusOf([this] { m_info->getPorts(0, 0); }), VEX_STATUS_BUSY) << "what the library says counts";
}

TEST_F(VexInfoTest, IdsUnderControllersAreReadInTheirScopes) {
  bareMachine();
  open();
  const auto controllers = m_info->getControllers();
  m_library.clearCalls();
  m_info->getControllerArrays(controllers);
  m_info->getControllerPorts(controllers);
  m_info->getControllerVolumes(controllers);
  EXPECT_THAT(
      m_library.callTexts(),
      ElementsAre("VexGetArrayHandles(1, 2, 11, null, 0)", "VexGetArrayHandles(1, 2, 11, null, 0)",
                  "VexGetPortHandles(1, 1, 11, null, 0)", "VexGetPortHandles(1, 1, 11, null, 0)",
                  "VexGetVolumeHandles(1, 2, 11, null, 0)", "VexGetVolumeHandles(1, 2, 11, null, 0)"));
}

TEST_F(VexInfoTest, IdsUnderControllersStandUnderTheControllersIds) {
  open();
  const auto controllers = m_info->getControllers();
  const std::wstring sata = idOf("controller-11");
  const std::wstring lyx = idOf("controller-12");
  EXPECT_THAT(m_info->getControllerArrays(controllers),
              testing::UnorderedElementsAre(Pair(sata, ElementsAre(idOf("array-41"))), Pair(lyx, IsEmpty())));
  EXPECT_THAT(m_info->getControllerVolumes(controllers),
              testing::UnorderedElementsAre(Pair(sata, ElementsAre(idOf("volume-51"), idOf("volume-52"))),
                                            Pair(lyx, IsEmpty())));
  EXPECT_THAT(m_info->getControllerPorts(controllers).at(lyx),
              ElementsAre(idOf("port-65"), idOf("port-66"), idOf("port-67")));
}

TEST_F(VexInfoTest, LevelsAreAskedForInTheModelsOrderTheInvalidOneFirst) {
  bareMachine();
  open();
  const auto raids = m_info->getRaids();
  m_library.clearCalls();
  const auto levels = m_info->getRaidLevels(raids);
  EXPECT_THAT(m_library.callTexts(),
              ElementsAre("VexGetRaidLevelInfo(1, 1, 0, out)", "VexGetRaidLevelInfo(1, 1, 1, out)",
                          "VexGetRaidLevelInfo(1, 1, 2, out)", "VexGetRaidLevelInfo(1, 1, 8, out)",
                          "VexGetRaidLevelInfo(1, 1, 4, out)"));
  const auto& ofRaid = levels.at(idOf("raid-1"));
  ASSERT_THAT(ofRaid, SizeIs(5));
  for (const auto& [level, support] : ofRaid) EXPECT_EQ(support.raidLevel(), level);
  EXPECT_FALSE(ofRaid.at(RaidLevel::RAID_INVALID).supported());
  EXPECT_EQ(ofRaid.at(RaidLevel::RAID_5).minDisks(), 3U);
}

TEST_F(VexInfoTest, LevelThatTheLibraryCannotExpressIsAskedForAsSuch) {
  open();
  const auto raids = m_info->getRaids();
  m_library.clearCalls();
  m_info->getRaidLevel(raids[0], RaidLevel::RAID_UNKNOWN);
  EXPECT_THAT(m_library.callTexts(), ElementsAre("VexGetRaidLevelInfo(1, 1, 2147483648, out)"));
}

// What every read has in common

TEST_F(VexInfoTest, NothingIsCached) {
  open();
  m_info->getVolumes(0, 0, "");
  m_library.change([](ScriptedMachine& machine) { machine.volumes.remove(kDataVolume); });
  EXPECT_THAT(handlesOf(m_info->getVolumes(0, 0, "")), ElementsAre(kSystemVolume));
}

TEST_F(VexInfoTest, EveryRecordComesToTheLibraryZeroedWhole) {
  readAll(*m_info);
  std::set<std::string> operations;
  for (const ScriptedCall& call : m_library.calls()) {
    if (call.arguments.empty() || call.arguments.back().bytes.empty()) continue;
    const std::string& bytes = call.arguments.back().bytes;
    EXPECT_EQ(bytes, std::string(bytes.size(), '\0')) << call.text();
    operations.insert(call.operation);
  }
  EXPECT_THAT(operations, SizeIs(9)) << "system, controller, device, phy, array, volume, port, RAID, level";
}

TEST_F(VexInfoTest, LibraryThatFillsNothingGivesEmptyObjects) {
  for (const char* operation : {"VexGetVolumeInfo", "VexGetEndDeviceInfo", "VexGetSystemInfo"}) {
    m_library.answer(onEveryCall(operation), VEX_STATUS_SUCCESS);
  }
  open();
  const std::vector<Volume> volumes = m_info->getVolumes(0, 0, "");
  ASSERT_THAT(volumes, SizeIs(2));
  for (const Volume& volume : volumes) {
    EXPECT_EQ(volume.handle(), 0U);
    EXPECT_EQ(volume.name(), L"");
    EXPECT_EQ(volume.totalSize(), 0U);
  }
  const std::vector<EndDevice> devices = m_info->getEndDevices(0, 0, "");
  ASSERT_THAT(devices, SizeIs(7));
  for (const EndDevice& device : devices) EXPECT_EQ(device.serialNumber(), L"");
  EXPECT_EQ(m_info->getVersion().vexVersion(), L"");
}

TEST_F(VexInfoTest, EveryFailureAtEveryCallOfAWholeReadIsRaisedAsItIs) {
  readAll(*m_info);
  const std::size_t calls = m_library.takeCalls().size();
  ASSERT_GT(calls, 50U);
  for (unsigned nth = 1; nth <= calls; ++nth) {
    for (const VEX_STATUS status : {VEX_STATUS_FAILED, VEX_STATUS_BUSY, UINT32_C(4711)}) {
      ScriptedLibrary::fresh().answer(onAnyCall(nth), status);
      const auto info = makeVexInfo();
      EXPECT_EQ(statusOf([&] { readAll(*info); }), status) << "at call " << nth;
      EXPECT_FALSE(m_library.answersPending());
      // Nothing is tried again, and nothing is read beyond the failure.
      EXPECT_THAT(m_library.callTexts(), SizeIs(nth));
    }
  }
}

TEST_F(VexInfoTest, TooSmallABufferIsAFailureEverywhereButAtTheFirstCallOfAnEnumeration) {
  readAll(*m_info);
  const ScriptedCalls calls = m_library.takeCalls();
  ASSERT_GT(calls.size(), 50U);
  for (unsigned nth = 1; nth <= calls.size(); ++nth) {
    ScriptedLibrary::fresh().answer(onAnyCall(nth), VEX_STATUS_NOT_ENOUGH_ITEMS);
    const auto info = makeVexInfo();
    const VEX_STATUS status = statusOf([&] { readAll(*info); });
    const std::string call = calls[nth - 1].text();
    const bool emptyEnumeration = call.find("null, 0)") != std::string::npos && calls[nth].text() == call;
    EXPECT_EQ(status, emptyEnumeration ? VEX_STATUS_SUCCESS : VEX_STATUS_NOT_ENOUGH_ITEMS) << call;
  }
}

TEST_F(VexInfoTest, WholeReadLeavesNoSessionOpenHoweverItEnds) {
  readAll(*m_info);
  const std::size_t calls = m_library.takeCalls().size();
  ASSERT_GT(calls, 50U);
  for (unsigned nth = 2; nth < calls; ++nth) {
    ScriptedLibrary::fresh().answer(onAnyCall(nth), VEX_STATUS_FAILED);
    {
      EXPECT_EQ(statusOf([] { readAll(*makeVexInfo()); }), VEX_STATUS_FAILED);
    }
    EXPECT_EQ(m_library.openSessions(), 0U) << "at call " << nth;
  }
}

TEST_F(VexInfoTest, WholeReadMakesNoCallTwiceThatNobodyAskedFor) {
  // Two calls an enumeration, one a record: the number of calls grows with the machine and not
  // with its square.
  const auto callsFor = [this](VEX_HANDLE disks) {
    ScriptedMachine machine;
    machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0);
    for (VEX_HANDLE disk = 0; disk < disks; ++disk) {
      machine.addDisk(1000 + disk, kSata);
      machine.addPhy(50000 + disk, 1000 + disk);
    }
    m_library.setMachine(machine);
    m_library.clearCalls();
    readAll(*m_info);
    return m_library.takeCalls().size();
  };
  EXPECT_EQ(callsFor(20) - callsFor(10), 10U * 3);
}

TEST_F(VexInfoTest, ThousandsOfDevicesKeepTheirOwnPhys) {
  ScriptedMachine machine;
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0);
  constexpr VEX_HANDLE kCount = 10000;
  for (VEX_HANDLE disk = 0; disk < kCount; ++disk) {
    machine.addDisk(1000 + disk, kSata);
    machine.addPhy(50000 + disk, 1000 + kCount - 1 - disk);
  }
  m_library.setMachine(machine);
  m_library.recordCalls(false);
  m_info->open();
  const auto devices = m_info->getEndDevices(0, 0, "");
  ASSERT_THAT(devices, SizeIs(kCount));
  for (VEX_HANDLE disk = 0; disk < kCount; ++disk) {
    ASSERT_EQ(devices[disk].phyHandle(), 50000 + kCount - 1 - disk);
  }
}

TEST_F(VexInfoTest, DevicesOfOneModelShareItsTexts) {
  ScriptedMachine machine;
  machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0);
  for (VEX_HANDLE disk = 0; disk < 4; ++disk) {
    setText(machine.addDisk(1000 + disk, kSata).model, disk < 3 ? "Common" : "Rare");
  }
  m_library.setMachine(machine);
  m_info->open();
  const auto devices = m_info->getEndDevices(0, 0, "");
  ASSERT_THAT(devices, SizeIs(4));
  EXPECT_EQ(&devices[1].model(), &devices[0].model());
  EXPECT_EQ(&devices[2].model(), &devices[0].model());
  EXPECT_EQ(devices[3].model(), L"Rare");
}

}  // namespace
