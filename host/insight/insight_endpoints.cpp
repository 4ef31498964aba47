#include "insight/insight_endpoints.h"

#include <boost/json/serialize.hpp>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "api/api_path.h"
#include "health/health_form.h"
#include "insight/action_endpoints.h"
#include "insight/alarm_endpoints.h"
#include "insight/health_schemas.h"
#include "insight/history_endpoints.h"
#include "insight/history_export_endpoint.h"
#include "insight/insight_read.h"
#include "insight/job_endpoints.h"
#include "insight/readiness_endpoint.h"
#include "insight/stream_endpoint.h"
#include "service/insight_service.h"

namespace host {

namespace {

/// A cause is there for as long as its alarm is open.
Answer healthAnswer(insight::InsightService& service) {
  const insight::HealthReport report = service.health();
  std::map<std::string, std::uint64_t> since;
  const auto findings = service.findings();
  for (const insight::Alarm& alarm : findings->alarms) {
    since[alarm.id()] = static_cast<std::uint64_t>(alarm.sinceMs);
  }
  const auto sinceWhen = [&](const std::string& id) -> std::optional<std::uint64_t> {
    const auto found = since.find(id);
    if (found == since.end()) return {};
    return found->second;
  };
  return jsonAnswer(boost::json::serialize(insight::formOf(report, sinceWhen)));
}

ApiEndpoint healthEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("getHealth", apiPath(desk->plugin, L"health"));
  endpoint.document = {
      {"health",
       "show",
       "Tells what is wrong with the machine, the worst first, and what each volume may still lose.",
       "Where the picture of the machine is old, health is unknown, unless something is critical.",
       {{200, "The health of the machine.", healthSchema()}}}};
  endpoint.handle = [desk](const Call&, const std::string&) { return healthAnswer(*desk->service); };
  return endpoint;
}

}  // namespace

void addInsightEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk,
                         std::size_t mostListeners) {
  table.add(healthEndpoint(desk));
  addActionEndpoints(table, desk);
  addJobEndpoints(table, desk);
  addAlarmEndpoints(table, desk);
  addHistoryEndpoints(table, desk);
  addReadinessEndpoint(table, desk);
  // Parts of the desk, which stays for as long as somebody has one.
  addStreamEndpoint(table, desk->plugin, {desk, &desk->service->stream()}, mostListeners);
  addHistoryExportEndpoint(table, desk->plugin, {desk, &desk->service->history()});
}

}  // namespace host
