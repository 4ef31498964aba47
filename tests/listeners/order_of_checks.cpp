#include "listeners/order_of_checks.h"

#include <gmock/gmock.h>

#include <ostream>

std::ostream& operator<<(std::ostream& stream, const Checks& checks) { return stream << checks.name; }

std::vector<Checks>& allChecks() {
  static std::vector<Checks> checks;
  return checks;
}

namespace {

/// The outcome of the request with these faults.
std::string outcomeWith(const Checks& checks, const std::vector<Fault>& faults) {
  Situation situation;
  checks.arrange(situation);
  for (const Fault& fault : faults) fault.spoil(situation);
  const auto listener = checks.listener(situation.session);
  const std::string outcome = outcomeOf(*listener, situation.request);
  if (!faults.empty()) {
    EXPECT_THAT(situation.session.actions, testing::IsEmpty()) << faults.front().name;
  }
  return outcome;
}

TEST_P(OrderOfChecks, ARequestWithoutFaultPasses) {
  EXPECT_EQ(outcomeWith(GetParam(), {}).find("Exception"), std::string::npos) << outcomeWith(GetParam(), {});
}

TEST_P(OrderOfChecks, EachFaultIsReportedInItsWords) {
  for (const Fault& fault : GetParam().faults) {
    EXPECT_EQ(outcomeWith(GetParam(), {fault}), fault.outcome) << fault.name;
  }
}

TEST_P(OrderOfChecks, OfTwoFaultsTheEarlierCheckIsReported) {
  const std::vector<Fault>& faults = GetParam().faults;
  for (auto earlier = faults.begin(); earlier != faults.end(); ++earlier) {
    // The earlier fault is made last, so that it stands where both spoil one field.
    for (auto later = std::next(earlier); later != faults.end(); ++later) {
      EXPECT_EQ(outcomeWith(GetParam(), {*later, *earlier}), earlier->outcome)
          << earlier->name << " and " << later->name;
    }
  }
}

}  // namespace

Fault unknownParameter() {
  return {"unknown parameter", [](Situation& s) { s.request.parameters[L"force"] = L"1"; },
          invalid("Argument: force not allowed")};
}

Fault unknownField() {
  return invalidField("unknown field", {"colour", "red"}, "Argument: colour not allowed");
}

Fault invalidField(const std::string& name, const BodyField& field, const std::string& report) {
  return {name, [field](Situation& s) { set(s.request.body, field); }, invalid(report)};
}

Fault refusedField(const std::string& name, const BodyField& field, const std::string& errorId,
                   const std::string& words) {
  return {name, [field](Situation& s) { set(s.request.body, field); }, refused(errorId, words)};
}

Fault unexpectedBody() {
  return {"unexpected body", [](Situation& s) { s.request.body = ServiceObject::object(); },
          invalid("Argument: root not a null type")};
}

Fault unknownObject(const std::string& rest, const std::string& errorId, const std::string& words) {
  return {"unknown object", [rest](Situation& s) { s.request.path = "999" + rest; }, refused(errorId, words)};
}
