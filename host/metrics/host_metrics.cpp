#include "metrics/host_metrics.h"

#include <numeric>
#include <vector>

#include "text.h"

namespace host {

namespace {

constexpr MetricFamily::Type kGauge = MetricFamily::Type::kGauge;
constexpr MetricFamily::Type kCounter = MetricFamily::Type::kCounter;

constexpr MetricFamily kBuildInfo{"mirn_build_info", kGauge, "What is fixed of the host."};
constexpr MetricFamily kPluginInfo{"mirn_plugin_info", kGauge, "What is fixed of the plug-in."};
constexpr MetricFamily kLibraryInfo{"mirn_library_info", kGauge,
                                    "What is fixed of the library that the plug-in stands on."};
constexpr MetricFamily kWorking{"mirn_host_working", kGauge,
                                "Whether the host and the plug-in work, as /healthz tells."};
constexpr MetricFamily kReady{"mirn_host_ready", kGauge,
                              "Whether requests are served with a fresh picture, as /readyz tells."};
constexpr MetricFamily kRequests{"mirn_http_requests_total", kCounter,
                                 "Requests that were answered, by operation and status."};
constexpr MetricFamily kDurations{"mirn_http_request_duration_seconds", MetricFamily::Type::kHistogram,
                                  "From a request to the beginning of its answer, by operation and status."};
constexpr MetricFamily kHits{"mirn_kept_answers_hits_total", kCounter,
                             "Reads that were answered without a call of the plug-in."};
constexpr MetricFamily kMisses{"mirn_kept_answers_misses_total", kCounter,
                               "Reads for whose answer the plug-in was called, and that may be kept."};
constexpr MetricFamily kKeptBytes{"mirn_kept_answers_bytes", kGauge, "What the answers take that are kept."};

std::string dotted(const PluginVersion& version) {
  return std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
         std::to_string(version.patch) + '.' + std::to_string(version.build);
}

}  // namespace

void writeFacts(MetricText& text, const std::string& version, const ovra::plugin_interface& plugin,
                const std::optional<LibraryDescription>& library) {
  text.begin(kBuildInfo);
  text.add({{"version", version}}, 1);
  text.begin(kPluginInfo);
  text.add({{"name", wideToUtf8(plugin.getName())},
            {"version", dotted(plugin.getVersion())},
            {"api_version", wideToUtf8(plugin.getApiVersion())}},
           1);
  if (!library) return;
  text.begin(kLibraryInfo);
  text.add({{"name", library->name}, {"simulated", library->isSimulated ? "true" : "false"}}, 1);
}

void writeVerdicts(MetricText& text, const HealthMonitor& monitor) {
  text.begin(kWorking);
  text.add({}, monitor.whyNotWorking() ? 0 : 1);
  text.begin(kReady);
  text.add({}, monitor.whyNotReady() ? 0 : 1);
}

void writeRequests(MetricText& text, const RequestCounts& requests) {
  const std::vector<RequestCounts::Row> rows = requests.rows();
  text.begin(kRequests);
  for (const RequestCounts::Row& row : rows) {
    text.add({{"operation", row.operation}, {"status", row.status}},
             std::accumulate(row.counts.begin(), row.counts.end(), std::uint64_t{0}));
  }
  text.begin(kDurations);
  const std::vector<double> bounds(RequestCounts::kBounds.begin(), RequestCounts::kBounds.end());
  for (const RequestCounts::Row& row : rows) {
    text.addHistogram({{"operation", row.operation}, {"status", row.status}}, bounds, row.counts,
                      row.seconds);
  }
}

void writeKeptAnswers(MetricText& text, const Revisions& revisions) {
  text.begin(kHits);
  text.add({}, revisions.hits);
  text.begin(kMisses);
  text.add({}, revisions.misses);
  text.begin(kKeptBytes);
  text.add({}, revisions.kept.bytes());
}

}  // namespace host
