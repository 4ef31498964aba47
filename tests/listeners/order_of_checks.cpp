#include "listeners/order_of_checks.h"

#include <gmock/gmock.h>

#include <ostream>

std::ostream& operator<<(std::ostream& stream, const Checks& checks) { return stream << checks.name; }

std::vector<Checks>& allChecks() {
  static std::vector<Checks> checks;
  return checks;
}

namespace {

Situation situationWith(const Checks& checks, const std::vector<Fault>& faults) {
  Situation situation;
  checks.arrange(situation);
  for (const Fault& fault : faults) fault.spoil(situation);
  return situation;
}

/// What the listener says of it. A request that passes acts once, unless it only reads.
std::string outcomeOf(const Checks& checks, Situation situation, bool passes) {
  const auto listener = checks.listener(situation.session);
  const std::string outcome = outcomeOf(*listener, situation.request);
  const bool acts = passes && situation.request.method != HttpMethod::kGet;
  EXPECT_EQ(situation.session.actions.size(), acts ? 1U : 0U) << outcome;
  return outcome;
}

std::string outcomeWith(const Checks& checks, const std::vector<Fault>& faults) {
  return outcomeOf(checks, situationWith(checks, faults), faults.empty());
}

bool areEqual(const Request& a, const Request& b) {
  return a.path == b.path && describe(a.body) == describe(b.body) && a.parameters == b.parameters;
}

/// Both faults are there when they are made in this order. One of the request itself may be gone, where the
/// next one is of the same field; those of the picture stay.
bool stand(const Checks& checks, const Fault& first, const Fault& second) {
  const Request bare = situationWith(checks, {}).request;
  const bool isOfTheRequest = !areEqual(situationWith(checks, {first}).request, bare);
  return !isOfTheRequest ||
         !areEqual(situationWith(checks, {first, second}).request, situationWith(checks, {second}).request);
}

TEST_P(OrderOfChecks, ARequestWithoutFaultPasses) {
  const std::string outcome = outcomeWith(GetParam(), {});
  EXPECT_EQ(outcome.find("Exception"), std::string::npos) << outcome;
}

TEST_P(OrderOfChecks, EachFaultIsReportedInItsWords) {
  for (const Fault& fault : GetParam().faults) {
    EXPECT_EQ(outcomeWith(GetParam(), {fault}), fault.outcome) << fault.name;
  }
}

TEST_P(OrderOfChecks, OfTwoFaultsTheEarlierCheckIsReported) {
  const std::vector<Fault>& faults = GetParam().faults;
  std::size_t pairs = 0;
  for (auto earlier = faults.begin(); earlier != faults.end(); ++earlier) {
    for (auto later = std::next(earlier); later != faults.end(); ++later) {
      // The earlier fault is made last; a pair of which it removes the other one says nothing.
      if (!stand(GetParam(), *later, *earlier)) continue;
      EXPECT_EQ(outcomeWith(GetParam(), {*later, *earlier}), earlier->outcome)
          << earlier->name << " and " << later->name;
      ++pairs;
    }
  }
  if (GetParam().areOfOneField) return;
  EXPECT_GE(pairs + 1, faults.size()) << "too few pairs in which both faults are there";
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
