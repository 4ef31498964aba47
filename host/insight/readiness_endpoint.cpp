#include "insight/readiness_endpoint.h"

#include <boost/json/serialize.hpp>
#include <optional>
#include <string>
#include <vector>

#include "api/api_path.h"
#include "insight/insight_read.h"
#include "insight/query_parameters.h"
#include "insight/readiness_schemas.h"
#include "readiness/readiness_form.h"
#include "readiness/readiness_report.h"
#include "service/insight_service.h"
#include "view/machine_view_source.h"

namespace host {

namespace {

using insight::InsightService;

constexpr char kVerifiedWithinDays[] = "verifiedWithinDays";
constexpr std::int64_t kMostDays = 3650;

std::vector<DocumentedParameter> readinessParameters() {
  return {{kVerifiedWithinDays, false, "How old a verification may be; 30 days without it.",
           R"({"type": "integer", "minimum": 1, "maximum": 3650})"}};
}

/// What keeps the past from being told is told in its place.
void recall(insight::ReadinessFacts& facts, InsightService& service) {
  if (!service.history().isKept()) {
    facts.whyNoPast = "No history is kept.";
    return;
  }
  try {
    facts.past = insight::pastOf(service.history(), service.findings()->alarms, facts.nowMs);
  } catch (const insight::sql::Failure& failure) {
    facts.whyNoPast = std::string("The history cannot be read now: ") + failure.what() + '.';
  }
}

Answer readinessAnswer(const Call& call, const InsightDesk& desk) {
  const Parameters& parameters = call.target.parameters;
  requireKnown(parameters, readinessParameters());
  const auto days = numberIn(parameters, kVerifiedWithinDays, 1, kMostDays);
  const auto machine = desk.views->view();
  insight::ReadinessFacts facts{*machine, desk.service->nowMs()};
  facts.verifiedWithinDays = days.value_or(insight::kUsualVerifiedWithinDays);
  recall(facts, *desk.service);
  return jsonAnswer(boost::json::serialize(formOf(readinessOf(facts))));
}

}  // namespace

void addReadinessEndpoint(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("getMachineReadiness", apiPath(desk->plugin, L"readiness"));
  EndpointDocument document{"readiness",
                            "show",
                            "Tells how ready the machine is for the next fault, and what to do about it.",
                            "What only a history tells is unknown where none is kept or it cannot be read.",
                            {{200, "How ready the machine is.", readinessSchema()}}};
  document.parameters = readinessParameters();
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) { return readinessAnswer(call, *desk); };
  table.add(std::move(endpoint));
}

}  // namespace host
