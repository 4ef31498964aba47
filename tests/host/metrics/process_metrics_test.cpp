#include "metrics/process_metrics.h"

#include <gtest/gtest.h>

#include <chrono>

#include "insight/metrics/metric_lines.h"

namespace host {

namespace {

double now() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

TEST(ProcessMetrics, TellWhatThisProcessTakes) {
  const ProcessLoad load = processLoad();
  ASSERT_TRUE(load.processorSeconds && load.startedAt && load.residentBytes && load.virtualBytes);
  EXPECT_GT(*load.processorSeconds, 0);
  EXPECT_GT(*load.residentBytes, 1'000'000U);
  EXPECT_GT(load.descriptors.value_or(3), 2U) << "unless the system does not count them";
  EXPECT_LT(*load.startedAt, now() + 1);
  EXPECT_GT(*load.startedAt, now() - 24 * 3600);
}

TEST(ProcessMetrics, TheStartStaysTheSame) { EXPECT_EQ(processLoad().startedAt, processLoad().startedAt); }

TEST(ProcessMetrics, WhatIsNotToldIsLeftOut) {
  ProcessLoad load;
  load.descriptors = 7;
  MetricText text;
  writeProcess(text, load);
  EXPECT_EQ(samplesOf(text), (std::map<std::string, std::string>{{"process_open_fds", "7"}}));
}

}  // namespace

}  // namespace host
