#ifndef MIRN_INSIGHT_METRICS_INSIGHT_METRICS_H
#define MIRN_INSIGHT_METRICS_INSIGHT_METRICS_H

#include <memory>
#include <mutex>
#include <string>

#include "metric_text.h"
#include "metrics/state_words.h"
#include "service/insight_service.h"

namespace insight {

/// What there is to measure of a machine and of the service that watches it, as that last saw it: nobody asks
/// the plug-in. Safe from any thread.
class InsightMetrics {
 public:
  /// `service` outlives this; `description` is what the plug-in tells of itself.
  InsightMetrics(InsightService& service, const ovra::data_transfer::ServiceObject& description);

  void write(MetricText& text);

 private:
  std::shared_ptr<const std::string> machineText(const MachineView& machine);

  InsightService& m_service;
  const MachineWords m_words;

  std::mutex m_mutex;
  ovra::PluginPosition m_position;            ///< Of the kept text.
  std::shared_ptr<const std::string> m_text;  ///< Of the machine; null before the first.
};

}  // namespace insight

#endif
