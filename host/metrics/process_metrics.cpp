#include "metrics/process_metrics.h"

namespace host {

namespace {

constexpr MetricFamily::Type kGauge = MetricFamily::Type::kGauge;

constexpr MetricFamily kProcessor{"process_cpu_seconds_total", MetricFamily::Type::kCounter,
                                  "Seconds that the processors have worked for the host."};
constexpr MetricFamily kStart{"process_start_time_seconds", kGauge, "When the host was started."};
constexpr MetricFamily kResident{"process_resident_memory_bytes", kGauge, "Memory that the host has."};
constexpr MetricFamily kVirtual{"process_virtual_memory_bytes", kGauge, "Addresses that the host has taken."};
constexpr MetricFamily kDescriptors{"process_open_fds", kGauge, "Descriptors that the host has open."};
constexpr MetricFamily kMostDescriptors{"process_max_fds", kGauge, "Descriptors that it may have open."};

void add(MetricText& text, const MetricFamily& family, const std::optional<double>& value) {
  if (!value) return;
  text.begin(family);
  text.addReal({}, *value);
}

void add(MetricText& text, const MetricFamily& family, const std::optional<std::uint64_t>& value) {
  if (!value) return;
  text.begin(family);
  text.add({}, *value);
}

}  // namespace

void writeProcess(MetricText& text, const ProcessLoad& load) {
  add(text, kProcessor, load.processorSeconds);
  add(text, kStart, load.startedAt);
  add(text, kResident, load.residentBytes);
  add(text, kVirtual, load.virtualBytes);
  add(text, kDescriptors, load.descriptors);
  add(text, kMostDescriptors, load.mostDescriptors);
}

}  // namespace host
