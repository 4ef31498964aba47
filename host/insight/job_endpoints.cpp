#include "insight/job_endpoints.h"

#include <algorithm>
#include <string>
#include <vector>

#include "api/api_path.h"
#include "insight/history_reading.h"
#include "insight/insight_read.h"
#include "insight/job_schemas.h"
#include "insight/list_answer.h"
#include "insight/moving_list.h"
#include "insight/page.h"
#include "insight/query_parameters.h"
#include "insight/schema_parts.h"
#include "jobs/job_statistics.h"
#include "service/insight_service.h"
#include "text.h"
#include "view/object_form.h"

namespace host {

namespace {

using insight::InsightService;
using insight::Job;

constexpr std::size_t kId = 3;  ///< Its place among the segments.
constexpr char kEnded[] = "ended";
const std::vector<std::string> kStates{"running", kEnded};

/// So many of those that ended last count.
constexpr std::size_t kCounted = 1000;

DocumentedParameter kindParameter() {
  return {"kind", false, "Of what kind.", R"({"type": "string", "minLength": 1})"};
}

std::vector<DocumentedParameter> listParameters() {
  std::vector<DocumentedParameter> parameters{
      {"state", false, "Those that run, unless told.", wordSchema(kStates)}, kindParameter()};
  for (DocumentedParameter& each : pageParameters()) parameters.push_back(std::move(each));
  return parameters;
}

std::vector<Job> runningOf(const insight::Findings& findings, const std::string& kind) {
  std::vector<Job> running = findings.jobs;
  const auto isOther = [&](const Job& job) { return !kind.empty() && job.kind != kind; };
  running.erase(std::remove_if(running.begin(), running.end(), isOther), running.end());
  return running;
}

MovingPage<Job> endedPage(insight::History& history, const insight::EndedQuery& query) {
  requireHistory(history);
  insight::EndedPage page = history.jobPage(query);
  MovingPage<Job> jobs{{}, page.next};
  for (const insight::LastingRecord& record : page.items) jobs.items.push_back(jobOf(record));
  return jobs;
}

Answer jobsAnswer(const Call& call, InsightService& service) {
  const Parameters& parameters = call.target.parameters;
  requireKnown(parameters, listParameters());
  const bool isEnded = wordIn(parameters, "state", kStates) == kEnded;
  const insight::EndedQuery query{textIn(parameters, "kind"), limitIn(parameters),
                                  textIn(parameters, "cursor")};
  const auto findings = service.findings();
  const auto longestFirst = [](const Job& job) { return insight::ListPlace{0, job.seenFromMs, job.id}; };
  const MovingPage<Job> page = readingHistory([&] {
    if (isEnded) return endedPage(service.history(), query);
    return pageOf(runningOf(*findings, query.kind), longestFirst, query.limit, query.cursor);
  });
  boost::json::array items;
  for (const Job& job : page.items) items.push_back(formOf(job, service.nowMs()));
  return listAnswer({{"position", insight::formOf(findings->position)}}, std::move(items), page.next);
}

/// One that runs needs no history.
std::optional<Job> jobNamed(const std::string& id, InsightService& service) {
  const auto findings = service.findings();
  const auto found = std::find_if(findings->jobs.begin(), findings->jobs.end(),
                                  [&](const Job& job) { return job.id == id; });
  if (found != findings->jobs.end()) return *found;
  if (!service.history().isKept()) return {};
  const auto record = readingHistory([&] { return service.history().job(id); });
  if (!record) return {};
  return jobOf(*record);
}

Answer jobAnswer(const Call& call, InsightService& service) {
  requireKnown(call.target.parameters, {});
  const auto job = jobNamed(wideToUtf8(call.target.segments[kId]), service);
  if (!job) throw Refusal(404, "There is no such job");
  return jsonAnswer(boost::json::serialize(formOf(*job, service.nowMs())));
}

Answer statisticsAnswer(const Call& call, insight::History& history) {
  const Parameters& parameters = call.target.parameters;
  requireKnown(parameters, {kindParameter()});
  const std::string kind = textIn(parameters, "kind");
  requireHistory(history);
  std::vector<Job> ended;
  for (const auto& record : readingHistory([&] { return history.endedJobs(kind, kCounted); })) {
    ended.push_back(jobOf(record));
  }
  boost::json::array items;
  for (const insight::JobStatistics& each : statisticsOf(ended)) items.push_back(formOf(each));
  return jsonAnswer(boost::json::serialize(boost::json::object{{"items", std::move(items)}}));
}

ApiEndpoint jobsEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("listJobs", apiPath(desk->plugin, L"jobs"));
  EndpointDocument document{"jobs",
                            "list",
                            "Lists work on volumes: who had it begun, how far it is, and how it ended.",
                            "What runs is told even where no history is kept.",
                            {{200, "A page of jobs.", jobsSchema()}, {422, {}}}};
  document.parameters = listParameters();
  document.columns = {"id",    "kind",  "object", "outcome", "percent", "timeLeftSeconds",
                      "actor", "start", "end"};
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) { return jobsAnswer(call, *desk->service); };
  return endpoint;
}

ApiEndpoint jobEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("getJob", apiPath(desk->plugin, L"jobs/{id}"));
  EndpointDocument document{"jobs",
                            "show",
                            "Tells of one job.",
                            "One that has ended is there for as long as the history keeps it.",
                            {{200, "The job.", jobSchema()}, {404, {}}}};
  document.parameters = {{"id", true, "Its id.", R"({"type": "string", "x-mirn": {"refersTo": "job"}})"}};
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) { return jobAnswer(call, *desk->service); };
  return endpoint;
}

ApiEndpoint statisticsEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("getJobStatistics", apiPath(desk->plugin, L"jobs/statistics"));
  EndpointDocument document{"jobs",
                            "statistics",
                            "Tells how jobs went and how long they took, by kind, and by kind and volume.",
                            "The 1000 that ended last count.",
                            {{200, "Counts and times.", jobStatisticsSchema()}, {422, {}}}};
  document.parameters = {kindParameter()};
  document.columns = {"kind", "volumeId", "count", "completed", "medianSeconds"};
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) {
    return statisticsAnswer(call, desk->service->history());
  };
  return endpoint;
}

}  // namespace

void addJobEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk) {
  table.add(jobsEndpoint(desk));
  table.add(jobEndpoint(desk));
  table.add(statisticsEndpoint(desk));
}

}  // namespace host
