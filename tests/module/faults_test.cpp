#include <gmock/gmock.h>

#include "module/fault_bench.h"
#include "support/by_name.h"
#include "support/text_form.h"

// Every call of the library that a request makes, refused with every status. The first call is the action
// itself; the others renew the picture.

namespace {

constexpr unsigned kAction = 1;
constexpr unsigned kOpen = 2;

class FaultsDuringARequest : public FaultBench, public testing::WithParamInterface<ActionRequest> {
 protected:
  struct Expectation {
    std::string outcome;
    bool renewed;  ///< The picture.
    Lines log;
  };

  void SetUp() override { m_calls = callsWithoutFaults(); }

  /// Serves the request on the machine with this array name.
  std::string serve(const ServedModule& served, const std::string& arrayName) {
    library.setMachine(tinyMachine(arrayName));
    library.effect(onCall(GetParam().operation),
                   [](ScriptedMachine& machine, const ScriptedCall&) { GetParam().effect(machine); });
    return served.outcomeOf(GetParam().request);
  }

  unsigned callsWithoutFaults() {
    freshMachine(nextName());
    ServedModule served(module);
    served.start();
    library.recordCalls(true);
    EXPECT_EQ(serve(served, nextName()), textForm(GetParam().answer));
    const Lines operations = takeOperations();
    library.recordCalls(false);
    EXPECT_EQ(operations.front(), GetParam().operation);
    EXPECT_EQ(operations.at(kOpen - 1), "VexSessionOpen");
    EXPECT_EQ(operations.back(), "VexSessionClose");
    return static_cast<unsigned>(operations.size());
  }

  Expectation expectationAt(unsigned call, VEX_STATUS status) const {
    const std::string text = statusToText(status);
    if (call == kAction) return {refusal(status), true, {}};
    if (call == m_calls) return {failureText("VexException", "-", text), false, {}};
    return {textForm(GetParam().staleAnswer), false, {warning(call == kOpen ? kOpenFailed : kReadFailed)}};
  }

  static std::string refusal(VEX_STATUS status) {
    const RefusalRule& rule = GetParam().refusal;
    const bool mapped = status == rule.mappedStatus;
    return failureText(rule.exceptionClass, mapped ? rule.mappedErrorId : statusToErrorId(status),
                       statusToText(status));
  }

  void refuse(const ServedModule& served, unsigned call, VEX_STATUS status) {
    const Expectation expected = expectationAt(call, status);
    const std::string before = std::exchange(m_pictured, nextName());
    fail(call, status);
    EXPECT_EQ(serve(served, m_pictured), expected.outcome);
    EXPECT_FALSE(library.answersPending());
    EXPECT_EQ(log.take(), expected.log);
    if (!expected.renewed) m_pictured = before;
    expectPicture(served, m_pictured, false);
    if (call == m_calls) ++m_lostSessions;
    EXPECT_EQ(library.openSessions(), m_lostSessions);
  }

  /// No lock is held any more: the action is done, and another one renews the picture.
  void expectUnharmed(const ServedModule& served) {
    expectPicture(served, m_pictured, true);
    EXPECT_EQ(serve(served, nextName()), textForm(GetParam().answer));
    const std::string last = nextName();
    library.setMachine(tinyMachine(last));
    EXPECT_EQ(served.outcomeOf(post(L"mirn", {L"rescan"})), "null");
    expectPicture(served, last, true);
    EXPECT_EQ(log.take(), Lines());
  }

  void refuseWithEveryStatus(unsigned call) {
    m_pictured = nextName();
    m_lostSessions = 0;
    freshMachine(m_pictured);
    ServedModule served(module);
    served.start();
    for (VEX_STATUS status = 1; status <= kLastStatus; ++status) {
      SCOPED_TRACE("call " + std::to_string(call) + ", status " + std::to_string(status));
      refuse(served, call, status);
      if (HasFailure()) return;
    }
    expectUnharmed(served);
  }

  unsigned m_calls = 0;
  std::string m_pictured;  ///< The array's name in the picture.
  std::size_t m_lostSessions = 0;
};

TEST_P(FaultsDuringARequest, AreReportedOrToleratedAtEveryCallWithEveryStatus) {
  for (unsigned call = 1; call <= m_calls && !HasFailure(); ++call) refuseWithEveryStatus(call);
  EXPECT_EQ(faults(), m_calls * kLastStatus);
}

INSTANTIATE_TEST_SUITE_P(Routes, FaultsDuringARequest, testing::ValuesIn(actionRequests()), ByName());

}  // namespace
