#include "disks_listener.h"

#include <gmock/gmock.h>

#include "listeners/order_of_checks.h"
#include "mirn_exception.h"
#include "support/by_name.h"

namespace {

using testing::ElementsAre;

void arrangeDisk(FakeSession& session) { session.endDevices = {aDisk(L"40"), aDisk(L"41")}; }

class DisksListenerTest : public ListenerTest<DisksListener> {
 protected:
  DisksListenerTest() { arrangeDisk(m_session); }

  DiskMaker& disk() { return m_session.disk(L"41"); }
  std::string putSpare(const char* action) { return put("41/spare", body({{"action", action}})); }
};

TEST_F(DisksListenerTest, EachActionTakesTheDisksHandle) {
  put("41/clear");
  putSpare("MARK");
  putSpare("UNMARK");
  put("41/marknormal");
  put("41/resetsmart");
  EXPECT_THAT(
      m_session.actions,
      ElementsAre("clearMetadata(handle 1041)", "markAsSpare(handle 1041, handle 0)",
                  "unmarkAsSpare(handle 1041)", "markAsNormal(handle 1041)", "resetSmartEvent(handle 1041)"));
}

TEST_F(DisksListenerTest, RemovingTakesTheWholeDeviceAndAnswersNull) {
  EXPECT_EQ(remove("41"), "null");
  EXPECT_EQ(remove("40", body({{"anything", true}})), "null") << "a body is ignored";
  EXPECT_THAT(m_session.actions, ElementsAre("removeDisk(disk 41)", "removeDisk(disk 40)"));
}

TEST_F(DisksListenerTest, AnAnswerTellsUsageAndStateWhenTheyChanged) {
  m_session.duringAction = [this] { disk().usage(DiskUsage::SPARE).state(DiskState::OFFLINE); };
  EXPECT_EQ(putSpare("MARK"), "diskId = \"41\", state = \"OFFLINE\", usage = \"SPARE\"");
}

TEST_F(DisksListenerTest, AnAnswerTellsUsageAloneOrStateAlone) {
  m_session.duringAction = [this] { disk().usage(DiskUsage::SPARE); };
  EXPECT_EQ(putSpare("MARK"), "diskId = \"41\", usage = \"SPARE\"");
  m_session.duringAction = [this] { disk().state(DiskState::OFFLINE); };
  EXPECT_EQ(put("41/clear"), "diskId = \"41\", state = \"OFFLINE\"");
}

TEST_F(DisksListenerTest, AnAnswerToAChangeOfNeitherHoldsTheIdAlone) {
  EXPECT_EQ(put("41/resetsmart"), "diskId = \"41\"");
}

TEST_F(DisksListenerTest, ClearingNeedsADisk) {
  for (const DeviceType type : {DeviceType::NON_DISK_STORAGE, DeviceType::NON_STORAGE}) {
    disk().deviceType(type);
    expectRefused(put("41/clear"), "NOT_SUPPORTED", "End Device is not a disk");
  }
}

TEST_F(DisksListenerTest, ClearingLetsAnUnknownTypeOfDevicePass) {
  disk().deviceType(DeviceType::UNKNOWN);
  EXPECT_EQ(put("41/clear"), "diskId = \"41\"");
}

TEST_F(DisksListenerTest, TheOtherActionsDoNotAskForTheTypeOfDevice) {
  disk().deviceType(DeviceType::NON_STORAGE);
  EXPECT_EQ(put("41/marknormal"), "diskId = \"41\"");
  EXPECT_EQ(put("41/resetsmart"), "diskId = \"41\"");
  EXPECT_EQ(putSpare("MARK"), "diskId = \"41\"");
  EXPECT_EQ(remove("41"), "null");
}

TEST_F(DisksListenerTest, AnX8DiskGetsTheSameWordsUnderTwoIds) {
  for (const X8Disk role : {X8Disk::X8_A, X8Disk::X8_B}) {
    disk().x8(role);
    const std::string words = "Mark/unmark as spare is not supported for X8 disks";
    expectRefused(putSpare("MARK"), "NOT_SUPPORTED", words);
    expectRefused(putSpare("UNMARK"), "Mirn_DISK_INVALID_STATE", words);
  }
}

TEST_F(DisksListenerTest, TheSpareActionIsComparedExactlyAlsoOnAnX8Disk) {
  expectRefused(putSpare("mark"), "INVALID_PARAMETER", "Invalid action parameter");
  disk().x8(X8Disk::X8_A);
  expectRefused(putSpare("mark"), "INVALID_PARAMETER", "Invalid action parameter");
}

TEST_F(DisksListenerTest, AFailureOfTheSpareActionArrivesUnderTheListenersClass) {
  m_session.duringAction = [] { throw MirnException("Mirn_DISK_INVALID_STATE", "Refused"); };
  EXPECT_EQ(putSpare("MARK"), refused("Mirn_DISK_INVALID_STATE", "Refused"));
  EXPECT_EQ(putSpare("UNMARK"), refused("Mirn_DISK_INVALID_STATE", "Refused"));
}

TEST_F(DisksListenerTest, AFailureOfTheReadForASpareActionPassesUnchanged) {
  m_session.failingRead = "getEndDevices";
  EXPECT_EQ(putSpare("MARK"), failed("Mirn_OPERATION_FAILED", kReadFailure));
}

TEST_F(DisksListenerTest, AFailureOfTheOtherActionsPassesUnchanged) {
  m_session.duringAction = [] { throw MirnException("Mirn_DISK_INVALID_STATE", "Refused"); };
  for (const char* path : {"41/clear", "41/marknormal", "41/resetsmart"}) {
    EXPECT_EQ(put(path), failed("Mirn_DISK_INVALID_STATE", "Refused")) << path;
  }
  EXPECT_EQ(remove("41"), failed("Mirn_DISK_INVALID_STATE", "Refused"));
}

TEST_F(DisksListenerTest, TheAnswerIsNullWhenTheDiskIsGoneAfterwards) {
  m_session.duringAction = [this] { m_session.loseEverything(); };
  EXPECT_EQ(put("41/clear"), "null");
  m_session.failingRead.clear();
  m_session.duringAction = [this] { m_session.endDevices.pop_back(); };
  EXPECT_EQ(putSpare("MARK"), "null");
}

TEST_F(DisksListenerTest, ABodyIsRefusedWhereNoneIsTakenEvenWhenEmpty) {
  for (const char* path : {"41/clear", "41/marknormal", "41/resetsmart"}) {
    expectInvalid(put(path, body({})), "Argument: root not a null type");
  }
}

TEST_F(DisksListenerTest, NoRouteReadsADisk) { EXPECT_EQ(get("41"), notFound()); }

Fault unknownDisk(const std::string& rest) {
  return unknownObject(rest, "OBJECT_NOT_FOUND", "Disk identifier not found");
}

std::vector<Fault> spareFaults() {
  return {
      unknownField(),
      unknownParameter(),
      unknownDisk("/spare"),
      refusedField("bad action", {"action", "mark"}, "INVALID_PARAMETER", "Invalid action parameter"),
      {"X8 disk", [](Situation& s) { s.session.disk(L"41").x8(X8Disk::X8_A); },
       refused("NOT_SUPPORTED", "Mark/unmark as spare is not supported for X8 disks")},
  };
}

std::vector<Fault> clearFaults() {
  return {
      unexpectedBody(),
      unknownParameter(),
      unknownDisk("/clear"),
      {"no disk", [](Situation& s) { s.session.disk(L"41").deviceType(DeviceType::NON_STORAGE); },
       refused("NOT_SUPPORTED", "End Device is not a disk")},
  };
}

INSTANTIATE_TEST_SUITE_P(
    Disks, OrderOfChecks,
    testing::Values(
        checksOf<DisksListener>("Clear", arrangeDisk, {HttpMethod::kPut, "41/clear"}, clearFaults()),
        checksOf<DisksListener>("Spare", arrangeDisk,
                                {HttpMethod::kPut, "41/spare", body({{"action", "MARK"}})}, spareFaults()),
        checksOf<DisksListener>("MarkNormal", arrangeDisk, {HttpMethod::kPut, "41/marknormal"},
                                {unexpectedBody(), unknownParameter(), unknownDisk("/marknormal")}),
        checksOf<DisksListener>("ResetSmart", arrangeDisk, {HttpMethod::kPut, "41/resetsmart"},
                                {unexpectedBody(), unknownParameter(), unknownDisk("/resetsmart")}),
        checksOf<DisksListener>("Delete", arrangeDisk, {HttpMethod::kDelete, "41"},
                                {unknownParameter(), unknownDisk("")})),
    ByName());

}  // namespace
