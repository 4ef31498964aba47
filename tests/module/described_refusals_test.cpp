#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <utility>

#include "module/fault_bench.h"
#include "plugin_extensions.h"
#include "service_exceptions.h"
#include "support/by_name.h"
#include "text.h"

// What clients see where the library refuses an action is what the plug-in has told of the route: for each
// route that acts, every status.

namespace {

using ovra::data_transfer::ServiceObject;

class DescribedRefusals : public FaultBench, public testing::WithParamInterface<ActionRequest> {
 protected:
  using Refusal = std::pair<std::wstring, std::wstring>;  ///< Error id and words.

  static Refusal refusalOf(const ServiceObject& form) {
    return {form.member(L"errorId").toString(), form.member(L"words").toString()};
  }

  /// The kind that a host makes of a refusal by what is told; empty when nothing is.
  std::wstring toldKind(const Refusal& refusal) const {
    for (const ServiceObject* list : {&route().member(L"refusals"), &m_told.member(L"statuses")}) {
      for (auto place = list->begin(); place != list->end(); ++place) {
        if (refusalOf(*(*place).value) == refusal) return (*place).value->member(L"kind").toString();
      }
    }
    const ServiceObject& unknown = m_told.member(L"unknownStatus");
    return refusalOf(unknown) == refusal ? unknown.member(L"kind").toString() : std::wstring();
  }

  /// The route whose library functions the request calls one of.
  const ServiceObject& route() const {
    const ServiceObject& routes = m_told.member(L"routes");
    for (auto place = routes.begin(); place != routes.end(); ++place) {
      const ServiceObject& operations = (*place).value->member(L"operations");
      for (auto name = operations.begin(); name != operations.end(); ++name) {
        if ((*name).value->toString() == utf8ToWide(GetParam().operation)) return *(*place).value;
      }
    }
    throw std::out_of_range(GetParam().operation);
  }

  static std::wstring expectedKind(VEX_STATUS status, VEX_STATUS stateStatus) {
    if (status == stateStatus) return L"state";
    return toText(statusToKind(status));
  }

  Refusal refused(const ServedModule& served, VEX_STATUS status) {
    fail(1, status);
    const Request& request = GetParam().request;
    try {
      served->handleRequest(request.path, request.method, request.segments, request.parameters, request.body);
    } catch (const std::exception& error) {
      const auto* const withId = dynamic_cast<const ovra::common::IErrorIdException*>(&error);
      return {utf8ToWide(withId ? withId->getErrorId() : "-"), utf8ToWide(error.what())};
    }
    return {};
  }

  ServiceObject m_told;
};

TEST_P(DescribedRefusals, AreSeenWithEveryStatus) {
  freshMachine(nextName());
  ServedModule served(module);
  m_told = dynamic_cast<ovra::described_plugin_1&>(*served.operator->()).describe();
  served.start();
  for (VEX_STATUS status = 1; status <= kLastStatus; ++status) {
    const Refusal refusal = refused(served, status);
    EXPECT_EQ(toldKind(refusal), expectedKind(status, GetParam().refusal.mappedStatus))
        << status << " " << wideToUtf8(refusal.first) << ": " << wideToUtf8(refusal.second);
  }
  log.take();
}

INSTANTIATE_TEST_SUITE_P(Routes, DescribedRefusals, testing::ValuesIn(actionRequests()), ByName());

TEST(DescribedOperations, AreThoseOfTheRequestsAndNoOthers) {
  std::set<std::wstring> called;
  for (const ActionRequest& request : actionRequests()) called.insert(utf8ToWide(request.operation));
  const LoadedModule module(MIRN_TEST_MODULE);
  const ServedModule served(module);
  const ServiceObject told = dynamic_cast<ovra::described_plugin_1&>(*served.operator->()).describe();
  std::set<std::wstring> described;
  const ServiceObject& routes = told.member(L"routes");
  for (auto place = routes.begin(); place != routes.end(); ++place) {
    const ServiceObject& operations = (*place).value->member(L"operations");
    for (auto name = operations.begin(); name != operations.end(); ++name) {
      described.insert((*name).value->toString());
    }
  }
  EXPECT_EQ(described, called);
}

}  // namespace
