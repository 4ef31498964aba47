#include "metrics/host_metrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/api/mock_plugin.h"
#include "insight/metrics/metric_lines.h"
#include "metrics/metrics_endpoint.h"

namespace host {

namespace {

using testing::HasSubstr;
using testing::Not;
using testing::Return;

TEST(HostMetrics, TellWhatIsFixed) {
  const MockPlugin plugin;
  MetricText text;
  writeFacts(text, "6.0.0", plugin, LibraryDescription{"libVEXL2.so", "/usr/lib/libVEXL2.so", true});
  const auto samples = samplesOf(text);
  EXPECT_EQ(samples.at(R"(mirn_build_info{version="6.0.0"})"), "1");
  EXPECT_EQ(samples.at(R"(mirn_plugin_info{name="mirn",version="5.4.0.1465",api_version="v1"})"), "1");
  EXPECT_EQ(samples.at(R"(mirn_library_info{name="libVEXL2.so",simulated="true"})"), "1");
  MetricText without;
  writeFacts(without, "6.0.0", plugin, {});
  EXPECT_THAT(without.text(), Not(HasSubstr("mirn_library_info")));
}

TEST(HostMetrics, TellWhetherTheHostWorks) {
  testing::NiceMock<MockPlugin> plugin;
  HealthMonitor monitor(plugin);
  EXPECT_CALL(plugin, getStatus).WillOnce(Return(0)).WillRepeatedly(Return(1));
  monitor.ask();
  MetricText text;
  writeVerdicts(text, monitor);
  EXPECT_EQ(samplesOf(text).at("mirn_host_working"), "1");
  EXPECT_EQ(samplesOf(text).at("mirn_host_ready"), "1");
  monitor.ask();
  MetricText later;
  writeVerdicts(later, monitor);
  EXPECT_EQ(samplesOf(later).at("mirn_host_working"), "0");
}

TEST(HostMetrics, TellOfRequestsHowManyAndHowLong) {
  RequestCounts requests;
  requests.count("", 404, std::chrono::microseconds(700));
  requests.count("", 404, std::chrono::microseconds(300));
  MetricText text;
  writeRequests(text, requests);
  const auto samples = samplesOf(text);
  const auto bucket = [&](const std::string& bound) {
    return samples.at("mirn_http_request_duration_seconds_bucket{operation=\"unknown\",status=\"404\",le=\"" +
                      bound + "\"}");
  };
  EXPECT_EQ(samples.at(R"(mirn_http_requests_total{operation="unknown",status="404"})"), "2");
  EXPECT_EQ(bucket("0.0005"), "1");
  EXPECT_EQ(bucket("0.001"), "2");
  EXPECT_EQ(bucket("+Inf"), "2");
  EXPECT_EQ(samples.at(R"(mirn_http_request_duration_seconds_sum{operation="unknown",status="404"})"),
            "0.001");
}

/// As a host has it whose plug-in tells nothing but the plain contract.
TEST(MetricsEndpoint, HasTheHostsOwnFamiliesWithoutInsight) {
  testing::NiceMock<MockPlugin> plugin;
  const HealthMonitor monitor(plugin);
  const RequestCounts requests;
  const std::optional<LibraryDescription> library;
  EndpointTable table;
  addMetricsEndpoint(table, {"6.0.0", plugin, library, monitor, requests, nullptr, nullptr});
  const EndpointTable::Resource* const resource = table.find({L"metrics"});
  ASSERT_NE(resource, nullptr);
  const ApiEndpoint& endpoint = *resource->find("GET");
  EXPECT_EQ(endpoint.role, Role::kObserve);
  EXPECT_FALSE(endpoint.takesTokenParameter);
  const Answer answer = endpoint.handle({}, "");
  EXPECT_EQ(answer.contentType, "text/plain; version=0.0.4; charset=utf-8");
  EXPECT_THAT(answer.body.text(), HasSubstr("\nmirn_host_working 0\n"));
  EXPECT_THAT(answer.body.text(), HasSubstr("\nprocess_start_time_seconds "));
  EXPECT_THAT(answer.body.text(), Not(HasSubstr("mirn_health")));
  EXPECT_THAT(answer.body.text(), Not(HasSubstr("mirn_kept_answers")));
}

}  // namespace

}  // namespace host
