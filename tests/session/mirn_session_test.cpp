#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "identifiers.h"
#include "status_text.h"
#include "support/by_name.h"
#include "support/session_fixture.h"
#include "vex_exception.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kReadFailed[] = "Error occurred while taking a snapshot";
constexpr VEX_STATUS kLastStatus = 47;

// The order of the calls

/// A list of calls as it should be, written down by the enumerations and records that it consists of.
class ExpectedCalls {
 public:
  using Handles = std::vector<VEX_HANDLE>;

  void call(const std::string& text) { m_texts.push_back(text); }

  /// Both calls of an enumeration. `before` stands for the arguments ahead of the buffer.
  void enumeration(const std::string& kind, const std::string& before, const Handles& found) {
    const std::string start = "VexGet" + kind + "Handles(" + before + ", ";
    const std::string count = std::to_string(found.size());
    call(start + "null, 0)");
    call(start + (found.empty() ? "null, " : "out, ") + count + ")");
  }

  void records(const std::string& kind, const Handles& handles) {
    for (const VEX_HANDLE handle : handles) {
      call("VexGet" + kind + "Info(1, " + std::to_string(handle) + ", out)");
    }
  }

  /// An enumeration with a scope, and the record of each object.
  void objects(const std::string& kind, const std::string& scope, const Handles& found) {
    enumeration(kind, "1, " + scope, found);
    records(kind, found);
  }

  void raids(const Handles& found) {
    enumeration("RaidInfo", "1", found);
    records("Raid", found);
  }

  void raidLevels(VEX_HANDLE raid) {
    for (const char* level : {"0", "1", "2", "8", "4"}) {
      call("VexGetRaidLevelInfo(1, " + std::to_string(raid) + ", " + level + ", out)");
    }
  }

  const std::vector<std::string>& texts() const { return m_texts; }

 private:
  std::vector<std::string> m_texts;
};

using TakingASnapshot = SessionTest;

TEST_F(TakingASnapshot, AsksTheLibraryInOneFixedOrder) {
  const ExpectedCalls::Handles disks = {21, 22, 23, 24, 25, 26, 27};
  const ExpectedCalls::Handles phys = {31, 32, 33, 34, 35, 36, 37};
  const ExpectedCalls::Handles ports = {61, 71, 62, 72, 63, 73, 64, 74, 65, 75, 66, 76, 67, 77};
  ExpectedCalls expected;
  expected.call("VexSessionOpen(out)");
  expected.raids({1, 2});
  expected.objects("Controller", "0, 0", {11, 12});
  expected.objects("EndDevice", "2, 11", {21, 22, 23, 24});
  expected.raids({1, 2});
  expected.objects("EndDevice", "2, 12", {25, 26, 27});
  expected.raids({1, 2});
  expected.objects("Array", "0, 0", {41});
  expected.objects("EndDevice", "0, 0", disks);
  expected.objects("Phy", "0, 0", phys);
  expected.objects("Port", "0, 0", ports);
  expected.objects("Volume", "0, 0", {51, 52});
  expected.call("VexGetSystemInfo(out)");
  expected.objects("Array", "2, 11", {41});
  expected.objects("Array", "2, 12", {});
  expected.objects("Port", "1, 11", {61, 62, 63, 64});
  expected.objects("Port", "1, 12", {65, 66, 67});
  expected.objects("Volume", "2, 11", {51, 52});
  expected.objects("Volume", "2, 12", {});
  expected.raidLevels(1);
  expected.raidLevels(2);
  expected.call("VexSessionClose(1)");

  m_session.takeSnapshot();
  EXPECT_EQ(m_library.callTexts(), expected.texts());
}

TEST_F(TakingASnapshot, GivesAFinishedPicture) {
  const MirnSnapshot snapshot = m_session.takeSnapshot();
  const std::wstring sata = idFromUniqueId("controller-11");
  EXPECT_THAT(snapshot.raids, SizeIs(2));
  EXPECT_THAT(snapshot.controllers, SizeIs(2));
  EXPECT_THAT(snapshot.endDevices, SizeIs(7));
  EXPECT_THAT(snapshot.volumes, SizeIs(2));
  EXPECT_THAT(snapshot.arrays.front().controllerIds(), ElementsAre(sata));
  EXPECT_EQ(snapshot.endDevices.front().controllerId(), sata);
  EXPECT_EQ(snapshot.endDevices.front().arrayId(), snapshot.arrays.front().id());
  EXPECT_EQ(snapshot.ports.front().localDeviceId(), sata);
  EXPECT_EQ(snapshot.controllerPorts.at(sata).size(), 4u);
  EXPECT_EQ(snapshot.raidLevels.size(), 2u);
  EXPECT_EQ(snapshot.version->vexVersion(), L"8.7.6.5432");
}

TEST_F(TakingASnapshot, MakesNoTextAgainThatAnotherPictureHas) {
  const MirnSnapshot before = m_session.takeSnapshot();
  const MirnSnapshot now = m_session.takeSnapshot();
  ASSERT_EQ(now.endDevices.size(), before.endDevices.size());
  for (std::size_t i = 0; i < now.endDevices.size(); ++i) {
    EXPECT_EQ(&now.endDevices[i].id(), &before.endDevices[i].id());
    EXPECT_EQ(&now.endDevices[i].address(), &before.endDevices[i].address());
    EXPECT_EQ(&now.endDevices[i].vendorId(), &before.endDevices[i].vendorId());
    EXPECT_EQ(&now.endDevices[i].serialNumber(), &before.endDevices[i].serialNumber());
  }
  EXPECT_EQ(&now.volumes.front().name(), &before.volumes.front().name());
  EXPECT_EQ(&now.ports.front().localDeviceId(), &now.controllers.front().id());
}

TEST_F(TakingASnapshot, TellsATextThatHasChangedAndNoOther) {
  const MirnSnapshot before = m_session.takeSnapshot();
  m_library.change(
      [](ScriptedMachine& machine) { setText(machine.endDevices.at(kFree1).serialNumber, "another"); });
  const MirnSnapshot now = m_session.takeSnapshot();
  for (std::size_t i = 0; i < now.endDevices.size(); ++i) {
    const EndDevice& disk = now.endDevices[i];
    EXPECT_EQ(disk.serialNumber(),
              disk.handle() == kFree1 ? L"another" : before.endDevices[i].serialNumber());
  }
}

TEST_F(TakingASnapshot, LeavesThePictureInPlaceAsItIs) {
  m_session.takeSnapshot();
  EXPECT_THAT(m_session.getVolumes(), IsEmpty());
}

TEST_F(TakingASnapshot, SucceedsWithHandlesThatNameNothing) {
  m_library.change([](ScriptedMachine& machine) {
    machine.endDevices.at(kFree1).arrayHandle = 998;
    machine.endDevices.at(kFree1).raidInfoHandle = 998;
    machine.volumes.at(kDataVolume).journalingDriveHandle = 998;
    machine.ports.at(portOf(kFree1)).connectedPortHandle = 998;
    machine.ports.at(portOf(kFree1)).localDeviceHandle = 998;
  });
  const MirnSnapshot snapshot = m_session.takeSnapshot();
  const EndDevice disk = withHandle(snapshot.endDevices, kFree1);
  EXPECT_EQ(disk.arrayId(), L"");
  EXPECT_EQ(disk.raidId(), L"");
  EXPECT_EQ(withHandle(snapshot.volumes, kDataVolume).journalingDriveId(), L"");
  EXPECT_EQ(withHandle(snapshot.ports, portOf(kFree1)).connectedPortId(), L"");
  EXPECT_EQ(withHandle(snapshot.ports, portOf(kFree1)).localDeviceId(), L"");
}

// Refusals

/// A machine with one object of each kind under its one controller: no enumeration is empty, and every call
/// of a snapshot can be refused in little time.
ScriptedMachine tinyMachine() {
  ScriptedMachine machine;
  machine.addRaid(1);
  machine.addController(11, VEX_CONTROLLER_TYPE_SATA, 1);
  machine.addDisk(21, 11);
  machine.addPhy(31, 21);
  machine.addControllerPort(61, 11);
  machine.addArray(41, "Array", {21});
  machine.addVolume(51, "Volume", 41, VEX_RAID_LEVEL_0);
  return machine;
}

class ARefusedCall : public TakingASnapshot, public testing::WithParamInterface<VEX_STATUS> {
 protected:
  void SetUp() override {
    freshTinyMachine();
    m_session.takeSnapshot();
    m_callCount = static_cast<unsigned>(m_library.takeCalls().size());
  }

  void freshTinyMachine() {
    ScriptedLibrary::fresh();
    m_library.setMachine(tinyMachine());
  }

  /// What a snapshot raises whose n-th call gets the status.
  Failure failureAt(unsigned call) {
    freshTinyMachine();
    m_library.recordCalls(false);
    m_library.answer(onAnyCall(call), GetParam());
    const Failure failure = failureOf([this] { m_session.takeSnapshot(); });
    EXPECT_FALSE(m_library.answersPending());
    EXPECT_EQ(m_library.openSessions(), 0u);
    EXPECT_EQ(failureOf([this] { m_session.takeSnapshot(); }), kNoFailure) << "the next one";
    EXPECT_EQ(m_library.openSessions(), 0u);
    return failure;
  }

  unsigned m_callCount = 0;
};

TEST_P(ARefusedCall, ToOpenSaysSo) {
  EXPECT_EQ(failureAt(1), (Failure{statusToErrorId(GetParam()), "Failed to open a session"}));
}

TEST_P(ARefusedCall, BetweenOpenAndCloseFailsTheSnapshotWithTheIdOfTheStatus) {
  ASSERT_EQ(m_callCount, 44u);
  for (unsigned call = 2; call < m_callCount; ++call) {
    EXPECT_EQ(failureAt(call), (Failure{statusToErrorId(GetParam()), kReadFailed})) << "call " << call;
  }
}

TEST_P(ARefusedCall, ToCloseReachesTheCallerAsItIs) {
  m_library.answer(onCall("VexSessionClose"), GetParam());
  try {
    m_session.takeSnapshot();
    FAIL() << "no failure";
  } catch (const VexException& failure) {
    EXPECT_EQ(failure.status, GetParam());
    EXPECT_STREQ(failure.what(), statusToText(GetParam()));
  }
  const std::string status = std::to_string(GetParam());
  EXPECT_EQ(m_library.callTexts().back(), "VexSessionClose(" + status + ")") << "the reader's last attempt";
  EXPECT_EQ(failureOf([this] { m_session.takeSnapshot(); }), kNoFailure) << "the next one";
}

INSTANTIATE_TEST_SUITE_P(EveryStatus, ARefusedCall, testing::Range(VEX_STATUS{1}, kLastStatus + 1));

TEST_F(TakingASnapshot, FailsWithAFixedIdForARaidEngineThatIsMissing) {
  m_library.change([](ScriptedMachine& machine) { machine.controllers.at(kLyx).raidInfoHandle = 998; });
  EXPECT_EQ(failureOf([this] { m_session.takeSnapshot(); }), (Failure{"Mirn_OPERATION_FAILED", kReadFailed}));
  EXPECT_EQ(m_library.openSessions(), 0u);
}

// Text that is not UTF-8

struct TextCase {
  const char* name;
  std::function<void(ScriptedMachine&, const char*)> set;
};

class TextOfTheLibrary : public TakingASnapshot, public testing::WithParamInterface<TextCase> {};

TEST_P(TextOfTheLibrary, ThatIsNotUtf8FailsTheSnapshot) {
  for (const char* text : {"Data\xFF", "Data\xED\xA0\x80", "\xED\xBF\xBF"}) {
    m_library.change([text](ScriptedMachine& machine) { GetParam().set(machine, text); });
    EXPECT_EQ(failureOf([this] { m_session.takeSnapshot(); }),
              (Failure{"Mirn_OPERATION_FAILED", kReadFailed}));
    EXPECT_EQ(m_library.openSessions(), 0u);
  }

  m_library.change([](ScriptedMachine& machine) { GetParam().set(machine, "Data"); });
  EXPECT_EQ(failureOf([this] { m_session.takeSnapshot(); }), kNoFailure);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, TextOfTheLibrary,
    testing::Values(
        TextCase{"LibraryVersion",
                 [](auto& machine, auto text) { setText(machine.system.libraryVersion, text); }},
        TextCase{"RaidId",
                 [](auto& machine, auto text) { setText(machine.raids.at(kLyxRaid).uniqueId, text); }},
        TextCase{"ControllerName",
                 [](auto& machine, auto text) { setText(machine.controllers.at(kLyx).name, text); }},
        TextCase{"DiskModel",
                 [](auto& machine, auto text) { setText(machine.endDevices.at(kFree1).model, text); }},
        TextCase{"ArrayName",
                 [](auto& machine, auto text) { setText(machine.arrays.at(kArray).name, text); }},
        TextCase{"PortId",
                 [](auto& machine, auto text) { setText(machine.ports.at(portOf(kFree1)).uniqueId, text); }},
        TextCase{"VolumeName",
                 [](auto& machine, auto text) { setText(machine.volumes.at(kDataVolume).name, text); }}),
    ByName());

}  // namespace
