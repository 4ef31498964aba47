#include "scripted_library/scripted_operations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "scripted_library/scripted_library.h"
#include "support/by_name.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;

constexpr VEX_HANDLE kSession = 1;
constexpr VEX_HANDLE kDisks[] = {kFree1, kFree2};

VEX_HANDLE handleOut = 0;
std::uint32_t countOut = 0;

template <class Record>
Record* recordOut() {
  static Record record;
  return &record;
}

using ScopedEnumeration = VEX_STATUS (*)(VEX_HANDLE, VEX_SCOPE_TYPE, VEX_HANDLE, VEX_HANDLE*, std::uint32_t*);

VEX_STATUS askForCount(ScopedEnumeration enumeration) {
  countOut = 0;
  return enumeration(kSession, VEX_SCOPE_SYSTEM, 0, nullptr, &countOut);
}

VEX_UNLOCK_PARAMS fullPassword() {
  VEX_UNLOCK_PARAMS params = {};
  for (char& character : params.password) character = 'x';
  params.master = 1;
  return params;
}

struct OperationCase {
  std::string name;
  VEX_STATUS (*call)();
  std::string text;
  VEX_STATUS status = VEX_STATUS_SUCCESS;
};

const OperationCase kCases[] = {
    {"VexInitialize", [] { return VexInitialize(); }, "VexInitialize()"},
    {"VexFinalize", [] { return VexFinalize(); }, "VexFinalize()"},
    {"VexSessionOpen", [] { return VexSessionOpen(&handleOut); }, "VexSessionOpen(out)"},
    {"VexSessionClose", [] { return VexSessionClose(kSession); }, "VexSessionClose(1)"},
    {"VexRescan", [] { return VexRescan(); }, "VexRescan()"},
    {"VexGetSystemInfo", [] { return VexGetSystemInfo(recordOut<VEX_SYSTEM_INFO>()); },
     "VexGetSystemInfo(out)"},
    {"VexGetControllerHandles", [] { return askForCount(VexGetControllerHandles); },
     "VexGetControllerHandles(1, 0, 0, null, 0)", VEX_STATUS_NOT_ENOUGH_ITEMS},
    {"VexGetEndDeviceHandles", [] { return askForCount(VexGetEndDeviceHandles); },
     "VexGetEndDeviceHandles(1, 0, 0, null, 0)", VEX_STATUS_NOT_ENOUGH_ITEMS},
    {"VexGetPhyHandles", [] { return askForCount(VexGetPhyHandles); }, "VexGetPhyHandles(1, 0, 0, null, 0)",
     VEX_STATUS_NOT_ENOUGH_ITEMS},
    {"VexGetArrayHandles", [] { return askForCount(VexGetArrayHandles); },
     "VexGetArrayHandles(1, 0, 0, null, 0)", VEX_STATUS_NOT_ENOUGH_ITEMS},
    {"VexGetVolumeHandles", [] { return askForCount(VexGetVolumeHandles); },
     "VexGetVolumeHandles(1, 0, 0, null, 0)", VEX_STATUS_NOT_ENOUGH_ITEMS},
    {"VexGetPortHandles", [] { return askForCount(VexGetPortHandles); },
     "VexGetPortHandles(1, 0, 0, null, 0)", VEX_STATUS_NOT_ENOUGH_ITEMS},
    {"VexGetRaidInfoHandles",
     [] {
       countOut = 1;
       return VexGetRaidInfoHandles(kSession, &handleOut, &countOut);
     },
     "VexGetRaidInfoHandles(1, out, 1)", VEX_STATUS_NOT_ENOUGH_ITEMS},
    {"VexGetControllerInfo",
     [] { return VexGetControllerInfo(kSession, kSata, recordOut<VEX_CONTROLLER_INFO>()); },
     "VexGetControllerInfo(1, 11, out)"},
    {"VexGetEndDeviceInfo",
     [] { return VexGetEndDeviceInfo(kSession, kFree1, recordOut<VEX_END_DEVICE_INFO>()); },
     "VexGetEndDeviceInfo(1, 23, out)"},
    {"VexGetPhyInfo", [] { return VexGetPhyInfo(kSession, phyOf(kFree1), recordOut<VEX_PHY_INFO>()); },
     "VexGetPhyInfo(1, 33, out)"},
    {"VexGetArrayInfo", [] { return VexGetArrayInfo(kSession, kArray, recordOut<VEX_ARRAY_INFO>()); },
     "VexGetArrayInfo(1, 41, out)"},
    {"VexGetVolumeInfo", [] { return VexGetVolumeInfo(kSession, kDataVolume, recordOut<VEX_VOLUME_INFO>()); },
     "VexGetVolumeInfo(1, 52, out)"},
    {"VexGetPortInfo", [] { return VexGetPortInfo(kSession, portOf(kFree1), recordOut<VEX_PORT_INFO>()); },
     "VexGetPortInfo(1, 73, out)"},
    {"VexGetRaidInfo", [] { return VexGetRaidInfo(kSession, kLyxRaid, recordOut<VEX_RAID_INFO>()); },
     "VexGetRaidInfo(1, 2, out)"},
    {"VexGetRaidLevelInfo",
     [] {
       return VexGetRaidLevelInfo(kSession, kLyxRaid, VEX_RAID_LEVEL_5, recordOut<VEX_RAID_LEVEL_INFO>());
     },
     "VexGetRaidLevelInfo(1, 2, 8, out)"},
    {"VexReadPatrolSetState", [] { return VexReadPatrolSetState(kSata, 1); }, "VexReadPatrolSetState(11, 1)"},
    {"VexROHISetState", [] { return VexROHISetState(kSata, 0); }, "VexROHISetState(11, 0)"},
    {"VexDiskClearMetadata", [] { return VexDiskClearMetadata(kFree1); }, "VexDiskClearMetadata(23)"},
    {"VexDiskMarkAsNormal", [] { return VexDiskMarkAsNormal(kFree1); }, "VexDiskMarkAsNormal(23)"},
    {"VexDiskMarkAsSpare", [] { return VexDiskMarkAsSpare(kFree1, kArray); }, "VexDiskMarkAsSpare(23, 41)"},
    {"VexDiskUnmarkAsSpare", [] { return VexDiskUnmarkAsSpare(kFree1); }, "VexDiskUnmarkAsSpare(23)"},
    {"VexDiskAssignStoragePool", [] { return VexDiskAssignStoragePool(kFree1, 255); },
     "VexDiskAssignStoragePool(23, 255)"},
    {"VexDiskUnlock",
     [] {
       const VEX_UNLOCK_PARAMS params = fullPassword();
       return VexDiskUnlock(kFree1, &params);
     },
     "VexDiskUnlock(23, {787878787878787878787878787878787878787878787878787878787878787801000000})"},
    {"VexDiskResetSmartEvent", [] { return VexDiskResetSmartEvent(kFree1); }, "VexDiskResetSmartEvent(23)"},
    {"VexPhyRemove", [] { return VexPhyRemove(phyOf(kFree1), 1); }, "VexPhyRemove(33, 1)"},
    {"VexPortLocate", [] { return VexPortLocate(portOf(kFree1), 1); }, "VexPortLocate(73, 1)"},
    {"VexArraySetWriteCacheState", [] { return VexArraySetWriteCacheState(kArray, 1); },
     "VexArraySetWriteCacheState(41, 1)"},
    {"VexAddDisksToArray", [] { return VexAddDisksToArray(kArray, kDisks, 2, 0); },
     "VexAddDisksToArray(41, [23, 24], 2, 0)"},
    {"VexVolumeMarkAsNormal", [] { return VexVolumeMarkAsNormal(kDataVolume); }, "VexVolumeMarkAsNormal(52)"},
    {"VexVolumeRebuild", [] { return VexVolumeRebuild(kSystemVolume, kFree1); }, "VexVolumeRebuild(51, 23)"},
    {"VexVolumeInitialize", [] { return VexVolumeInitialize(kDataVolume); }, "VexVolumeInitialize(52)"},
    {"VexVolumeVerify", [] { return VexVolumeVerify(kDataVolume, 1); }, "VexVolumeVerify(52, 1)"},
    {"VexVolumeCancelVerify", [] { return VexVolumeCancelVerify(kDataVolume); }, "VexVolumeCancelVerify(52)"},
    {"VexVolumeRename", [] { return VexVolumeRename(kDataVolume, "New name"); },
     "VexVolumeRename(52, \"New name\")"},
    {"VexExpandVolume", [] { return VexExpandVolume(kDataVolume, UINT64_MAX); },
     "VexExpandVolume(52, 18446744073709551615)"},
    {"VexVolumeSetCachePolicy", [] { return VexVolumeSetCachePolicy(kDataVolume, 3); },
     "VexVolumeSetCachePolicy(52, 3)"},
    {"VexRaidLevelModify",
     [] {
       VEX_RAID_LEVEL_MODIFY_PARAMS params = {};
       params.stripSize = VEX_STRIP_SIZE_64KB;
       params.raidLevel = VEX_RAID_LEVEL_5;
       return VexRaidLevelModify(kDataVolume, params);
     },
     "VexRaidLevelModify(52, {2000000008000000000000000000000000000000000000000000000000000000; null})"},
    {"VexVolumeDelete", [] { return VexVolumeDelete(kDataVolume); }, "VexVolumeDelete(52)"},
    {"VexVolumeCreate",
     [] {
       VEX_CREATE_VOLUME_PARAMS params = {};
       params.arrayHandle = kArray;
       setText(params.name, "abc");
       params.size = 0x0102030405060708;
       return VexVolumeCreate(params);
     },
     "VexVolumeCreate({290000006162630000000000000000000000000000000000"
     "000000000000000008070605040302010000000000000000})"},
    {"VexVolumeCreateFromDisks",
     [] {
       VEX_CREATE_FROM_DISKS_PARAMS params = {};
       params.disks = kDisks;
       params.diskCount = 2;
       params.sourceDiskHandle = kFree2;
       return VexVolumeCreateFromDisks(params, &handleOut);
     },
     "VexVolumeCreateFromDisks({00000000000000000200000018000000" + std::string(96, '0') +
         "; [23, 24]}, out)"},
    {"VexVolumeSetRwhPolicy", [] { return VexVolumeSetRwhPolicy(kDataVolume, kFree1, 2); },
     "VexVolumeSetRwhPolicy(52, 23, 2)"},
    {"VexGetEventHandle", [] { return VexGetEventHandle(&handleOut); }, "VexGetEventHandle(out)"},
    {"VexEventWait", [] { return VexEventWait(5000, 900); }, "VexEventWait(5000, 900)", VEX_STATUS_TIMEOUT},
    {"VexFreeEventHandle", [] { return VexFreeEventHandle(900); }, "VexFreeEventHandle(900)"},
};

class EveryOperationTest : public testing::TestWithParam<OperationCase> {
 protected:
  void SetUp() override {
    ASSERT_EQ(VexSessionOpen(&handleOut), VEX_STATUS_SUCCESS);
    ASSERT_EQ(handleOut, kSession);
    m_library.clearCalls();
    m_library.events().release();
  }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
};

TEST_P(EveryOperationTest, IsAnsweredAndRecorded) {
  EXPECT_EQ(GetParam().call(), GetParam().status);
  EXPECT_THAT(m_library.callTexts(), ElementsAre(GetParam().text));
}

TEST_P(EveryOperationTest, GivesThePlannedStatusOnce) {
  m_library.answer(onCall(GetParam().name), VEX_STATUS_BUSY);
  EXPECT_EQ(GetParam().call(), VEX_STATUS_BUSY);
  EXPECT_EQ(GetParam().call(), GetParam().status);
}

TEST_P(EveryOperationTest, CanBeGivenSuccessByPlan) {
  m_library.answer(onCall(GetParam().name), VEX_STATUS_SUCCESS);
  EXPECT_EQ(GetParam().call(), VEX_STATUS_SUCCESS);
}

TEST_P(EveryOperationTest, RunsHooksAndEffects) {
  std::vector<std::string> seen;
  m_library.before(onCall(GetParam().name), [&](const ScriptedCall& call) { seen.push_back(call.text()); });
  m_library.effect(onCall(GetParam().name),
                   [&](ScriptedMachine&, const ScriptedCall& call) { seen.push_back(call.operation); });
  GetParam().call();
  EXPECT_THAT(seen, ElementsAre(GetParam().text, GetParam().name));
}

INSTANTIATE_TEST_SUITE_P(Library, EveryOperationTest, testing::ValuesIn(kCases), ByName());

TEST(ScriptedOperationsTest, AreFiftyAndAllExercisedInTheOrderOfTheHeader) {
  ASSERT_EQ(std::size(kCases), 50U);
  for (std::size_t place = 0; place < kOperationCount; ++place) {
    EXPECT_EQ(scriptedOperations().at(place).name, kCases[place].name);
  }
}

TEST(ScriptedOperationsTest, UnknownNameIsRefused) {
  EXPECT_STREQ(scriptedOperation("VexRescan").name, "VexRescan");
  EXPECT_THROW(scriptedOperation("VexResacn"), std::invalid_argument);
}

}  // namespace
