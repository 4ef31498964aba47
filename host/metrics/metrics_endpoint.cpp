#include "metrics/metrics_endpoint.h"

#include <utility>
#include <vector>

#include "metric_text.h"
#include "metrics/host_metrics.h"
#include "metrics/insight_metrics.h"
#include "metrics/process_metrics.h"

namespace host {

namespace {

constexpr char kType[] = "text/plain";
constexpr char kWholeType[] = "text/plain; version=0.0.4; charset=utf-8";

EndpointDocument document() {
  return {"host",
          "metrics",
          "Tells what there is to measure, in the text format that Prometheus reads.",
          "What the machine is like comes from its last picture; the plug-in is not asked.",
          {{200, "A line for each number.", R"({"type": "string"})", kType}}};
}

std::string metricsOf(const Measured& measured, const std::string& facts) {
  MetricText text;
  if (measured.insight) measured.insight->write(text);
  text.append(facts);
  writeVerdicts(text, measured.monitor);
  writeRequests(text, measured.requests);
  if (measured.revisions != nullptr) writeKeptAnswers(text, *measured.revisions);
  writeProcess(text, processLoad());
  return text.take();
}

std::string factsOf(const Measured& measured) {
  MetricText text;
  writeFacts(text, measured.version, measured.plugin, measured.library);
  return text.take();
}

}  // namespace

void addMetricsEndpoint(EndpointTable& table, const Measured& measured) {
  ApiEndpoint endpoint;
  endpoint.operation = "getMetrics";
  endpoint.method = "GET";
  endpoint.path = L"metrics";
  endpoint.role = Role::kObserve;
  endpoint.takesTokenParameter = false;
  endpoint.document = document();
  endpoint.handle = [measured, facts = factsOf(measured)](const Call&, const std::string&) {
    return Answer{200, kWholeType, metricsOf(measured, facts), {}};
  };
  table.add(std::move(endpoint));
}

}  // namespace host
