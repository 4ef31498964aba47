#include "insight/alarm_endpoints.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "alarms/alarm.h"
#include "api/api_path.h"
#include "insight/alarm_schemas.h"
#include "insight/history_reading.h"
#include "insight/insight_read.h"
#include "insight/list_answer.h"
#include "insight/moving_list.h"
#include "insight/page.h"
#include "insight/query_parameters.h"
#include "insight/schema_parts.h"
#include "service/insight_service.h"
#include "text.h"
#include "view/object_form.h"

namespace host {

namespace {

using insight::Alarm;
using insight::InsightService;

constexpr std::size_t kId = 3;  ///< Its place among the segments.
constexpr char kCleared[] = "cleared";
const std::vector<std::string> kStates{"open", kCleared};

std::vector<DocumentedParameter> listParameters() {
  std::vector<DocumentedParameter> parameters{
      {"state", false, "The open ones, unless told.", wordSchema(kStates)}};
  for (DocumentedParameter& each : pageParameters()) parameters.push_back(std::move(each));
  return parameters;
}

insight::ListPlace worstThenLongest(const Alarm& alarm) {
  const auto severity = static_cast<std::int64_t>(alarm.cause.severity);
  return {static_cast<std::int64_t>(insight::Severity::kCritical) - severity, alarm.sinceMs, alarm.id()};
}

MovingPage<Alarm> clearedPage(insight::History& history, const insight::EndedQuery& query) {
  requireHistory(history);
  insight::EndedPage page = history.alarmPage(query);
  MovingPage<Alarm> alarms{{}, page.next};
  for (const insight::LastingRecord& record : page.items) alarms.items.push_back(alarmOf(record));
  return alarms;
}

Answer alarmsAnswer(const Call& call, InsightService& service) {
  const Parameters& parameters = call.target.parameters;
  requireKnown(parameters, listParameters());
  const bool isCleared = wordIn(parameters, "state", kStates) == kCleared;
  const insight::EndedQuery query{{}, limitIn(parameters), textIn(parameters, "cursor")};
  const auto findings = service.findings();
  const MovingPage<Alarm> page = readingHistory([&] {
    if (isCleared) return clearedPage(service.history(), query);
    return pageOf(findings->alarms, worstThenLongest, query.limit, query.cursor);
  });
  boost::json::array items;
  for (const Alarm& alarm : page.items) items.push_back(formOf(alarm));
  return listAnswer({{"position", insight::formOf(findings->position)}}, std::move(items), page.next);
}

/// One that is open needs no history.
std::optional<Alarm> alarmNamed(const std::string& id, InsightService& service) {
  const auto findings = service.findings();
  const auto found = std::find_if(findings->alarms.begin(), findings->alarms.end(),
                                  [&](const Alarm& alarm) { return alarm.id() == id; });
  if (found != findings->alarms.end()) return *found;
  if (!service.history().isKept()) return {};
  const auto record = readingHistory([&] { return service.history().alarm(id); });
  if (!record) return {};
  return alarmOf(*record);
}

Answer alarmAnswer(const std::optional<Alarm>& alarm) {
  if (!alarm) throw Refusal(404, "There is no such alarm");
  return jsonAnswer(boost::json::serialize(formOf(*alarm)));
}

std::vector<DocumentedParameter> idParameters() {
  return {{"id", true, "Its id, which is that of its cause.",
           R"({"type": "string", "x-mirn": {"refersTo": "alarm"}})"}};
}

ApiEndpoint alarmsEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("listAlarms", apiPath(desk->plugin, L"alarms"));
  EndpointDocument document{"alarms",
                            "list",
                            "Lists what is wrong, or was: each cause of bad health over time.",
                            "The open ones are told even where no history is kept.",
                            {{200, "A page of alarms.", alarmsSchema()}, {422, {}}}};
  document.parameters = listParameters();
  document.columns = {"severity", "kind", "object", "since", "cleared", "acknowledged", "text"};
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) {
    return alarmsAnswer(call, *desk->service);
  };
  return endpoint;
}

ApiEndpoint alarmEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("getAlarm", apiPath(desk->plugin, L"alarms/{id}"));
  EndpointDocument document{"alarms",
                            "show",
                            "Tells of one alarm: the open one of this id, else the last that there was.",
                            "One that has cleared is there for as long as the history keeps it.",
                            {{200, "The alarm.", alarmSchema()}, {404, {}}}};
  document.parameters = idParameters();
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) {
    requireKnown(call.target.parameters, {});
    return alarmAnswer(alarmNamed(wideToUtf8(call.target.segments[kId]), *desk->service));
  };
  return endpoint;
}

ApiEndpoint acknowledgeEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint;
  endpoint.operation = "acknowledgeAlarm";
  endpoint.method = "POST";
  endpoint.path = apiPath(desk->plugin, L"alarms/{id}/acknowledge");
  endpoint.role = Role::kOperate;
  endpoint.lane = Lane::kChanges;  // the audit waits for the disk
  endpoint.isChange = true;
  EndpointDocument document{
      "alarms",
      "acknowledge",
      "Takes notice of an open alarm, for all to see.",
      "Who comes second changes nothing. An alarm that becomes worse is open to notice anew.",
      {{200, "The alarm as it is then.", alarmSchema()}, {404, {}}}};
  document.effect = "changes";
  document.parameters = idParameters();
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) {
    requireKnown(call.target.parameters, {});
    return alarmAnswer(desk->service->acknowledge(wideToUtf8(call.target.segments[kId]), call.identity.name));
  };
  return endpoint;
}

}  // namespace

void addAlarmEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk) {
  table.add(alarmsEndpoint(desk));
  table.add(alarmEndpoint(desk));
  table.add(acknowledgeEndpoint(desk));
}

}  // namespace host
