#include "whatif/what_if_endpoint.h"

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <string>
#include <utility>
#include <vector>

#include "answers/json_writer.h"
#include "api/api_path.h"
#include "insight/history_reading.h"
#include "insight/query_parameters.h"
#include "jobs/job_statistics.h"
#include "service/insight_service.h"
#include "system/child_process.h"
#include "view/machine_view_source.h"
#include "view/object_form.h"
#include "whatif/what_if.h"
#include "whatif/what_if_events.h"
#include "whatif/what_if_schemas.h"

namespace host {

namespace {

constexpr char kProgram[] = "mirn-whatif";
constexpr std::size_t kCountedJobs = 1000;

/// How long work took; nothing where no history is kept, or cannot be read now.
boost::json::array statisticsOf(insight::History& history) {
  boost::json::array items;
  if (!history.isKept()) return items;
  try {
    std::vector<insight::Job> ended;
    for (const auto& record : readingHistory([&] { return history.endedJobs("", kCountedJobs); })) {
      ended.push_back(jobOf(record));
    }
    for (const auto& each : insight::statisticsOf(ended)) items.emplace_back(insight::formOf(each));
  } catch (const Refusal&) {
    items.clear();  // what is usual is assumed then
  }
  return items;
}

Answer whatIfAnswer(const std::string& body, const InsightDesk& desk, WhatIf& whatIf) {
  const auto machine = desk.views->view();
  const auto isDisk = [&](const std::wstring& id) { return machine->disk(id) != nullptr; };
  const boost::json::array events = whatIfEventsIn(body, isDisk);
  const std::string picture = writeJson(desk.watched.picture());
  const std::string question = R"({"answers": )" + picture + R"(, "events": )" +
                               boost::json::serialize(events) + R"(, "statistics": )" +
                               boost::json::serialize(statisticsOf(desk.service->history())) + "}";
  boost::json::object answer = boost::json::parse(whatIf.ask(question)).as_object();
  answer["position"] = boost::json::parse(picture).at("position");
  answer["libraryDecides"] = true;
  return jsonAnswer(boost::json::serialize(answer));
}

}  // namespace

void addWhatIfEndpoint(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint;
  endpoint.operation = "whatIf";
  endpoint.method = "POST";
  endpoint.path = apiPath(desk->plugin, L"whatif");
  endpoint.role = Role::kObserve;  // it changes nothing
  endpoint.lane = Lane::kReads;
  EndpointDocument document{
      "",
      "whatif",
      "Tells what would come of disks that fail or are pulled out.",
      "Worked through on a simulated twin of the machine, in a process of its own: what fails, "
      "takes over and is lost, and how long volumes are exposed. The real one is not touched. "
      "One is worked through at a time, for ten seconds at most.",
      {{200, "What would come of it.", whatIfSchema()}, {400, {}}, {404, {}}, {422, {}}, {503, {}}}};
  document.body = whatIfEventsSchema();
  endpoint.document = std::move(document);
  endpoint.handle = [desk, whatIf = std::make_shared<WhatIf>(helperProgram(kProgram))](
                        const Call& call, const std::string& body) {
    requireKnown(call.target.parameters, {});
    return whatIfAnswer(body, *desk, *whatIf);
  };
  table.add(std::move(endpoint));
}

}  // namespace host
