#include "scripted_library/scripted_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <future>
#include <stdexcept>
#include <thread>

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;

class ScriptedLibraryTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(VexSessionOpen(&m_session), VEX_STATUS_SUCCESS);
    m_library.clearCalls();
  }

  std::vector<VEX_HANDLE> volumes(VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle) {
    std::uint32_t count = 0;
    VexGetVolumeHandles(m_session, scope, scopeHandle, nullptr, &count);
    std::vector<VEX_HANDLE> handles(count);
    EXPECT_EQ(VexGetVolumeHandles(m_session, scope, scopeHandle, handles.data(), &count), VEX_STATUS_SUCCESS);
    return handles;
  }

  VEX_STATUS readVolume(VEX_HANDLE volume) {
    VEX_VOLUME_INFO info = {};
    return VexGetVolumeInfo(m_session, volume, &info);
  }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  VEX_HANDLE m_session = 0;
};

TEST_F(ScriptedLibraryTest, EnumerationTellsTheNumberFirst) {
  std::uint32_t count = 0;
  EXPECT_EQ(VexGetVolumeHandles(m_session, 0, 0, nullptr, &count), VEX_STATUS_NOT_ENOUGH_ITEMS);
  EXPECT_EQ(count, 2U);
  EXPECT_THAT(volumes(0, 0), ElementsAre(kSystemVolume, kDataVolume));
}

TEST_F(ScriptedLibraryTest, EnumerationTakesALargerBufferAndStoresTheCount) {
  VEX_HANDLE handles[5] = {};
  std::uint32_t count = 5;
  EXPECT_EQ(VexGetVolumeHandles(m_session, 0, 0, handles, &count), VEX_STATUS_SUCCESS);
  EXPECT_EQ(count, 2U);
  EXPECT_THAT(handles, ElementsAre(kSystemVolume, kDataVolume, 0, 0, 0));
}

TEST_F(ScriptedLibraryTest, EnumerationOfNothingSucceedsWithACountOfNone) {
  m_library.setMachine(ScriptedMachine());
  std::uint32_t count = 7;
  EXPECT_EQ(VexGetVolumeHandles(m_session, 0, 0, nullptr, &count), VEX_STATUS_SUCCESS);
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(VexGetVolumeHandles(m_session, 0, 0, nullptr, &count), VEX_STATUS_SUCCESS);
}

TEST_F(ScriptedLibraryTest, ScopeOfAControllerChoosesWhatHangsUnderIt) {
  EXPECT_THAT(volumes(VEX_SCOPE_CONTROLLER, kSata), ElementsAre(kSystemVolume, kDataVolume));
  EXPECT_THAT(volumes(VEX_SCOPE_CONTROLLER, kLyx), IsEmpty());
}

TEST_F(ScriptedLibraryTest, SessionsAreNumberedAndMustBeOpen) {
  VEX_HANDLE second = 0;
  EXPECT_EQ(VexSessionOpen(&second), VEX_STATUS_SUCCESS);
  EXPECT_EQ(second, 2U);
  EXPECT_EQ(m_library.openSessions(), 2U);
  EXPECT_EQ(VexSessionClose(m_session), VEX_STATUS_SUCCESS);
  EXPECT_EQ(m_library.openSessions(), 1U);
  EXPECT_EQ(readVolume(kDataVolume), VEX_STATUS_INVALID_SESSION);
  EXPECT_EQ(VexSessionClose(m_session), VEX_STATUS_INVALID_SESSION);
}

TEST_F(ScriptedLibraryTest, UnknownHandleAndMissingMemoryAreRefused) {
  EXPECT_EQ(readVolume(0), VEX_STATUS_INVALID_HANDLE);
  EXPECT_EQ(VexGetVolumeInfo(m_session, kDataVolume, nullptr), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexGetVolumeHandles(m_session, 0, 0, nullptr, nullptr), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexSessionOpen(nullptr), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexVolumeRename(kDataVolume, nullptr), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexDiskUnlock(kFree1, nullptr), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexVolumeRename(52, null)", "VexDiskUnlock(23, null)"));
}

TEST_F(ScriptedLibraryTest, LevelThatTheEngineLacksIsAllZero) {
  VEX_RAID_LEVEL_INFO info = {};
  info.supported = 1;
  EXPECT_EQ(VexGetRaidLevelInfo(m_session, kSataRaid, VEX_RAID_LEVEL_NONE, &info), VEX_STATUS_SUCCESS);
  EXPECT_EQ(info.supported, 0U);
  EXPECT_EQ(VexGetRaidLevelInfo(m_session, kSata, VEX_RAID_LEVEL_0, &info), VEX_STATUS_INVALID_HANDLE);
}

TEST_F(ScriptedLibraryTest, PlannedAnswerHitsTheChosenCallOnly) {
  m_library.answer(onCall("VexVolumeDelete", 2), VEX_STATUS_INVALID_STATE);
  EXPECT_TRUE(m_library.answersPending());
  EXPECT_EQ(VexVolumeDelete(kDataVolume), VEX_STATUS_SUCCESS);
  EXPECT_EQ(VexVolumeInitialize(kDataVolume), VEX_STATUS_SUCCESS);
  EXPECT_TRUE(m_library.answersPending());
  EXPECT_EQ(VexVolumeDelete(kDataVolume), VEX_STATUS_INVALID_STATE);
  EXPECT_FALSE(m_library.answersPending());
  EXPECT_EQ(VexVolumeDelete(kDataVolume), VEX_STATUS_SUCCESS);
}

TEST_F(ScriptedLibraryTest, PlannedAnswerCanHoldFromACallOn) {
  m_library.answer(onCallsFrom("VexRescan", 2), VEX_STATUS_BUSY);
  EXPECT_EQ(VexRescan(), VEX_STATUS_SUCCESS);
  EXPECT_EQ(VexRescan(), VEX_STATUS_BUSY);
  EXPECT_EQ(VexRescan(), VEX_STATUS_BUSY);
}

TEST_F(ScriptedLibraryTest, PlannedAnswerCanHitTheNthCallWhateverItIs) {
  m_library.answer(onAnyCall(3), VEX_STATUS_FAILED);
  EXPECT_EQ(VexRescan(), VEX_STATUS_SUCCESS);
  EXPECT_EQ(readVolume(kDataVolume), VEX_STATUS_SUCCESS);
  EXPECT_EQ(VexVolumeDelete(kDataVolume), VEX_STATUS_FAILED);
  EXPECT_EQ(VexVolumeDelete(kDataVolume), VEX_STATUS_SUCCESS);
}

TEST_F(ScriptedLibraryTest, FirstPlanOfTwoHolds) {
  m_library.answer(onCall("VexRescan"), VEX_STATUS_BUSY);
  m_library.answer(onEveryCall("VexRescan"), VEX_STATUS_FAILED);
  EXPECT_EQ(VexRescan(), VEX_STATUS_BUSY);
  EXPECT_EQ(VexRescan(), VEX_STATUS_FAILED);
}

TEST_F(ScriptedLibraryTest, MisspeltOperationIsNoSilentPlan) {
  EXPECT_THROW(onCall("VexVolumeRebuilt"), std::invalid_argument);
  EXPECT_THROW(onEveryCall(""), std::invalid_argument);
}

TEST_F(ScriptedLibraryTest, FailedCallChangesNothing) {
  m_library.answer(onCall("VexSessionClose"), VEX_STATUS_FAILED);
  m_library.answer(onCall("VexVolumeDelete"), VEX_STATUS_FAILED);
  m_library.effect(onEveryCall("VexVolumeDelete"),
                   [](ScriptedMachine& machine, const ScriptedCall&) { machine.volumes.clear(); });
  EXPECT_EQ(VexSessionClose(m_session), VEX_STATUS_FAILED);
  EXPECT_EQ(m_library.openSessions(), 1U);
  EXPECT_EQ(VexVolumeDelete(kDataVolume), VEX_STATUS_FAILED);
  EXPECT_TRUE(m_library.machine().volumes.has(kDataVolume));
}

TEST_F(ScriptedLibraryTest, ActionsChangeNothingUnlessGivenAnEffect) {
  EXPECT_EQ(VexVolumeDelete(kDataVolume), VEX_STATUS_SUCCESS);
  EXPECT_TRUE(m_library.machine().volumes.has(kDataVolume));
  m_library.effect(onEveryCall("VexVolumeDelete"), [](ScriptedMachine& machine, const ScriptedCall& call) {
    machine.volumes.remove(static_cast<VEX_HANDLE>(call.arguments.at(0).number));
  });
  EXPECT_EQ(VexVolumeDelete(kSystemVolume), VEX_STATUS_SUCCESS);
  EXPECT_THAT(volumes(0, 0), ElementsAre(kDataVolume));
}

TEST_F(ScriptedLibraryTest, EffectDecidesTheHandleOfANewVolume) {
  m_library.effect(onCall("VexVolumeCreateFromDisks"),
                   [](ScriptedMachine& machine, const ScriptedCall& call) {
                     machine.addArray(42, "Array_1", call.arguments.at(0).handles);
                     machine.addVolume(53, "New", 42, VEX_RAID_LEVEL_0);
                     machine.createdVolume = 53;
                   });
  const VEX_HANDLE disks[] = {kFree1, kFree2};
  VEX_CREATE_FROM_DISKS_PARAMS params = {};
  params.disks = disks;
  params.diskCount = 2;
  VEX_HANDLE volume = 0;
  EXPECT_EQ(VexVolumeCreateFromDisks(params, &volume), VEX_STATUS_SUCCESS);
  EXPECT_EQ(volume, 53U);
  EXPECT_EQ(m_library.machine().endDevices.at(kFree1).arrayHandle, 42U);
}

TEST_F(ScriptedLibraryTest, HookCanGrowTheMachineBetweenTwoCalls) {
  m_library.before(onCall("VexGetVolumeHandles", 2), [this](const ScriptedCall&) {
    m_library.change(
        [](ScriptedMachine& machine) { machine.addVolume(53, "Third", kArray, VEX_RAID_LEVEL_0); });
  });
  VEX_HANDLE handles[2] = {};
  std::uint32_t count = 0;
  EXPECT_EQ(VexGetVolumeHandles(m_session, 0, 0, nullptr, &count), VEX_STATUS_NOT_ENOUGH_ITEMS);
  EXPECT_EQ(VexGetVolumeHandles(m_session, 0, 0, handles, &count), VEX_STATUS_NOT_ENOUGH_ITEMS);
  EXPECT_EQ(count, 3U);
}

TEST_F(ScriptedLibraryTest, HookMayCallTheLibraryItself) {
  m_library.before(onCall("VexRescan"), [](const ScriptedCall&) { VexVolumeInitialize(kDataVolume); });
  EXPECT_EQ(VexRescan(), VEX_STATUS_SUCCESS);
  EXPECT_THAT(m_library.callTexts(), ElementsAre("VexRescan()", "VexVolumeInitialize(52)"));
}

TEST_F(ScriptedLibraryTest, RecordGivenByValueCanBeReadBack) {
  VEX_CREATE_VOLUME_PARAMS params = {};
  setText(params.name, "A name that is far too long");
  params.raidLevel = VEX_RAID_LEVEL_10;
  VexVolumeCreate(params);
  const auto given = m_library.calls().at(0).arguments.at(0).record<VEX_CREATE_VOLUME_PARAMS>();
  EXPECT_STREQ(given.name, "A name that is f");
  EXPECT_EQ(given.raidLevel, VEX_RAID_LEVEL_10);
  EXPECT_THROW(m_library.calls().at(0).arguments.at(0).record<VEX_UNLOCK_PARAMS>(), std::logic_error);
}

TEST_F(ScriptedLibraryTest, DisksBehindAPointerAreCopiedNotTheirAddress) {
  VEX_RAID_LEVEL_MODIFY_PARAMS params = {};
  {
    const std::vector<VEX_HANDLE> disks = {kFree1, kFree2};
    params.disks = disks.data();
    params.diskCount = 2;
    VexRaidLevelModify(kDataVolume, params);
  }
  const ScriptedArgument given = m_library.calls().at(0).arguments.at(1);
  EXPECT_THAT(given.handles, ElementsAre(kFree1, kFree2));
  EXPECT_EQ(given.record<VEX_RAID_LEVEL_MODIFY_PARAMS>().disks, nullptr);
  EXPECT_EQ(given.record<VEX_RAID_LEVEL_MODIFY_PARAMS>().diskCount, 2U);
}

TEST_F(ScriptedLibraryTest, ActionsAreToldFromReads) {
  readVolume(kDataVolume);
  VexRescan();
  VexVolumeInitialize(kDataVolume);
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexRescan()", "VexVolumeInitialize(52)"));
  EXPECT_THAT(textsOf(onlyOf(OperationKind::READING, m_library.calls())),
              ElementsAre("VexGetVolumeInfo(1, 52, out)"));
}

TEST_F(ScriptedLibraryTest, TakingTheCallsEmptiesTheRecord) {
  VexRescan();
  EXPECT_THAT(textsOf(m_library.takeCalls()), ElementsAre("VexRescan()"));
  EXPECT_THAT(m_library.callTexts(), IsEmpty());
}

TEST_F(ScriptedLibraryTest, RecordCanBeSwitchedOff) {
  m_library.recordCalls(false);
  VexRescan();
  m_library.recordCalls(true);
  EXPECT_THAT(m_library.callTexts(), IsEmpty());
}

TEST_F(ScriptedLibraryTest, FreshForgetsEverything) {
  m_library.answer(onEveryCall("VexRescan"), VEX_STATUS_BUSY);
  m_library.change([](ScriptedMachine& machine) { machine.volumes.clear(); });
  VexRescan();
  EXPECT_THAT(ScriptedLibrary::fresh().callTexts(), IsEmpty());
  EXPECT_EQ(VexRescan(), VEX_STATUS_SUCCESS);
  EXPECT_EQ(m_library.openSessions(), 0U);
  EXPECT_TRUE(m_library.machine().volumes.has(kDataVolume));
}

TEST_F(ScriptedLibraryTest, CallCanBeHeldWhileOthersGoOn) {
  std::promise<void> entered;
  std::promise<void> mayGoOn;
  m_library.before(onCall("VexVolumeRebuild"), [&](const ScriptedCall&) {
    entered.set_value();
    mayGoOn.get_future().wait();
  });
  auto rebuild = std::async(std::launch::async, [] { return VexVolumeRebuild(kSystemVolume, kFree1); });
  entered.get_future().wait();
  EXPECT_EQ(readVolume(kDataVolume), VEX_STATUS_SUCCESS);
  mayGoOn.set_value();
  EXPECT_EQ(rebuild.get(), VEX_STATUS_SUCCESS);
}

TEST_F(ScriptedLibraryTest, CallsOfManyThreadsAreAllRecorded) {
  std::vector<std::thread> threads;
  for (VEX_HANDLE volume = 1; volume <= 4; ++volume) {
    threads.emplace_back([volume] {
      for (int round = 0; round < 100; ++round) VexVolumeInitialize(volume);
    });
  }
  for (std::thread& thread : threads) thread.join();
  const ScriptedCalls calls = m_library.calls();
  EXPECT_EQ(calls.size(), 400U);
  for (const ScriptedCall& call : calls) EXPECT_NE(call.thread, std::this_thread::get_id());
}

}  // namespace
