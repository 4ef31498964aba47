#include <gmock/gmock.h>

#include <functional>

#include "module/fault_bench.h"
#include "support/text_form.h"

// Calls of the library that no request makes, refused with every status: those of the start, of the event
// thread and of the probe.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FaultsDuringTheStart : public FaultBench {
 protected:
  /// What happens when the n-th call of the start gets a status.
  using Judge = std::function<void(ServedModule& served, VEX_STATUS status)>;

  static constexpr unsigned kInitialize = 1;
  static constexpr unsigned kOpen = 2;

  void SetUp() override {
    freshMachine("Array");
    library.recordCalls(true);
    ServedModule served(module);
    served.start();
    const Lines operations = takeOperations();
    ASSERT_EQ(operations.at(kInitialize - 1), "VexInitialize");
    ASSERT_EQ(operations.at(kOpen - 1), "VexSessionOpen");
    const auto close = std::find(operations.begin(), operations.end(), "VexSessionClose");
    m_close = static_cast<unsigned>(close - operations.begin()) + 1;
    ASSERT_THAT(Lines(close + 1, operations.end()), ElementsAre("VexGetEventHandle", "VexEventWait"));
  }

  void refuse(unsigned call, const Judge& judge) {
    for (VEX_STATUS status = 1; status <= kLastStatus && !HasFailure(); ++status) {
      SCOPED_TRACE("call " + std::to_string(call) + ", status " + std::to_string(status));
      freshMachine("Array");
      ServedModule served(module);
      fail(call, status);
      judge(served, status);
      EXPECT_FALSE(library.answersPending());
    }
  }

  void expectOffline(const ServedModule& served) const {
    EXPECT_EQ(served->getStatus(), 1);
    EXPECT_EQ(served.outcomeOf(get(L"mirn/volumes")),
              failureText("ListenerException", "Mirn_OFFLINE", "Mirn plugin does not work"));
  }

  void expectServed(const ServedModule& served) {
    EXPECT_EQ(served->getStatus(), 0);
    expectPicture(served, "Array", true);
    EXPECT_EQ(served.outcomeOf(post(L"mirn", {L"rescan"})), "null");
    EXPECT_THAT(log.take(), IsEmpty());
  }

  unsigned m_close = 0;
};

TEST_F(FaultsDuringTheStart, ALibraryThatDoesNotOpenKeepsThePluginOffline) {
  refuse(kInitialize, [this](ServedModule& served, VEX_STATUS) {
    EXPECT_FALSE(served->initialize());
    EXPECT_THAT(log.take(),
                ElementsAre("Error: Ordan (R) Mirn Plug-In: Mirn VEX session could not be initialized"));
    expectOffline(served);
    served.start();
    expectServed(served);
  });
  EXPECT_EQ(faults(), kLastStatus);
}

TEST_F(FaultsDuringTheStart, AFailedFirstSnapshotLeavesAnEmptyPictureThatTheNextEventFills) {
  const std::string empty = "[]\n[]\n[]\n[]\n[]\n[]";
  for (unsigned call = kOpen; call < m_close && !HasFailure(); ++call) {
    refuse(call, [&](ServedModule& served, VEX_STATUS) {
      served.start();
      EXPECT_THAT(log.take(), ElementsAre(warning(call == kOpen ? kOpenFailed : kReadFailed)));
      EXPECT_EQ(library.openSessions(), 0u);
      EXPECT_EQ(served->getStatus(), 0);
      EXPECT_EQ(served.picture(true), empty);
      library.events().wakeAndSettle();
      expectServed(served);
    });
  }
  EXPECT_EQ(faults(), (m_close - kOpen) * kLastStatus);
}

TEST_F(FaultsDuringTheStart, ARefusedCloseLeavesTheStartAsItIsWithTheLibraryOpen) {
  refuse(m_close, [this](ServedModule& served, VEX_STATUS status) {
    library.recordCalls(true);
    EXPECT_EQ(outcomeOf([&] {
                served->initialize();
                return ovra::data_transfer::ServiceObject::null();
              }),
              failureText("VexException", "-", statusToText(status)));
    EXPECT_THAT(takeOperations(), testing::Not(testing::Contains("VexFinalize")));
    library.recordCalls(false);
    EXPECT_EQ(library.openSessions(), 1u);
    expectOffline(served);
    served.start();
    expectServed(served);
  });
  EXPECT_EQ(faults(), kLastStatus);
}

TEST_F(FaultsDuringTheStart, TheEventThreadGoesOnWithoutAnEventHandleAndAfterAnyWait) {
  for (const unsigned call : {m_close + 1, m_close + 2}) {
    refuse(call, [this](ServedModule& served, VEX_STATUS) {
      served.start();
      expectServed(served);
    });
  }
  EXPECT_EQ(faults(), 2 * kLastStatus);
}

class FaultsAfterTheStart : public FaultBench {
 protected:
  /// The calls of the event thread from the moment when it wakes to the next wait.
  Lines operationsOfARefresh() {
    freshMachine(nextName());
    ServedModule served(module);
    served.start();
    library.recordCalls(true);
    library.events().wakeAndSettle();
    const Lines operations = takeOperations();
    library.recordCalls(false);
    EXPECT_EQ(operations.front(), "VexSessionOpen");
    EXPECT_EQ(operations.back(), "VexEventWait");
    EXPECT_EQ(operations.at(operations.size() - 2), "VexSessionClose");
    return operations;
  }

  void wakeWith(const std::string& arrayName) {
    library.setMachine(tinyMachine(arrayName));
    library.events().wakeAndSettle();
  }

  void refuseWithEveryStatus(unsigned call) {
    const std::string before = nextName();
    freshMachine(before);
    ServedModule served(module);
    served.start();
    for (VEX_STATUS status = 1; status <= kLastStatus && !HasFailure(); ++status) {
      SCOPED_TRACE("call " + std::to_string(call) + ", status " + std::to_string(status));
      fail(call, status);
      wakeWith(nextName());
      EXPECT_FALSE(library.answersPending());
      EXPECT_THAT(log.take(), ElementsAre(warning(call == 1 ? kOpenFailed : kReadFailed)));
      EXPECT_EQ(library.openSessions(), 0u);
      expectPicture(served, before, false);
    }
    const std::string last = nextName();
    wakeWith(last);
    expectPicture(served, last, true);
  }
};

// A refused close ends the process there.
TEST_F(FaultsAfterTheStart, AFailedRefreshKeepsTheOldPictureUntilTheNextEvent) {
  const auto reads = static_cast<unsigned>(operationsOfARefresh().size()) - 2;
  for (unsigned call = 1; call <= reads && !HasFailure(); ++call) refuseWithEveryStatus(call);
  EXPECT_EQ(faults(), reads * kLastStatus);
}

TEST_F(FaultsAfterTheStart, TextThatIsNotUtf8KeepsTheOldPictureUntilItIsMended) {
  const std::string before = nextName();
  freshMachine(before);
  ServedModule served(module);
  served.start();
  for (const char* text : {"\xFF", "Arr\xED\xA0\x80", "\xED\xBF\xBF", "\xED\xA0\xBD\xED\xB2\xBE"}) {
    wakeWith(text);
    EXPECT_THAT(log.take(), ElementsAre(warning(kReadFailed)));
    EXPECT_EQ(library.openSessions(), 0u);
    expectPicture(served, before, false);
  }
  const std::string last = nextName();
  wakeWith(last);
  expectPicture(served, last, true);
}

TEST_F(FaultsAfterTheStart, AnEventWaitThatFailsIsFollowedByAnotherAndOnlyATimeoutRenewsThePicture) {
  std::string name = nextName();
  freshMachine(name);
  ServedModule served(module);
  served.start();
  for (VEX_STATUS status = 1; status <= kLastStatus; ++status) {
    const std::string now = nextName();
    library.setMachine(tinyMachine(now));
    library.events().wakeAndSettle(status);
    if (status == VEX_STATUS_TIMEOUT) name = now;
    expectPicture(served, name, false);
  }
}

TEST_F(FaultsAfterTheStart, TheProbeTellsOfALibraryThatDoesNotAnswer) {
  freshMachine(nextName());
  ServedModule served(module);
  served.start();
  for (VEX_STATUS status = 1; status <= kLastStatus; ++status) {
    fail(1, status);
    EXPECT_EQ(served->getStatus(), 1);
    EXPECT_EQ(served->getStatus(), 0);
  }
  EXPECT_EQ(faults(), kLastStatus);
}

// The signal to bring a larger buffer, with nothing to bring it for: the enumeration stays as empty as it is.
TEST_F(FaultsAfterTheStart, AGrowSignalForAnEmptyListIsNoFailure) {
  freshMachine("Array");
  const auto withoutVolumes = [this](const std::string& arrayName) {
    ScriptedMachine machine = tinyMachine(arrayName);
    for (const VEX_VOLUME_INFO& volume : std::vector<VEX_VOLUME_INFO>(machine.volumes.records())) {
      machine.volumes.remove(volume.volumeHandle);
    }
    library.setMachine(machine);
  };
  withoutVolumes("Before");
  ServedModule served(module);
  served.start();
  withoutVolumes("After");
  library.answer(onCall("VexGetVolumeHandles"), VEX_STATUS_NOT_ENOUGH_ITEMS);
  EXPECT_EQ(served.outcomeOf(post(L"mirn", {L"rescan"})), "null");
  EXPECT_THAT(log.take(), IsEmpty());
  EXPECT_THAT(served.picture(false),
              testing::AllOf(testing::HasSubstr("\"After\""), testing::EndsWith("\n[]")));
}

}  // namespace
