#include "metrics/insight_metrics.h"

#include "metrics/finding_metrics.h"
#include "metrics/machine_metrics.h"

namespace insight {

InsightMetrics::InsightMetrics(InsightService& service, const ovra::data_transfer::ServiceObject& description)
    : m_service(service), m_words(machineWordsOf(description)) {}

void InsightMetrics::write(MetricText& text) {
  const std::shared_ptr<const Findings> findings = m_service.findings();
  if (findings->machine) text.append(*machineText(*findings->machine));
  writeFindings(text, *findings, m_service.nowMs());
  writeHistory(text, m_service.history());
}

/// While one makes it, the others wait for that one.
std::shared_ptr<const std::string> InsightMetrics::machineText(const MachineView& machine) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const ovra::PluginPosition& now = machine.position;
  if (m_text && m_position.epoch == now.epoch && m_position.revision == now.revision) return m_text;
  MetricText text;
  writeMachine(text, machine, m_words);
  m_text = std::make_shared<const std::string>(text.take());
  m_position = now;
  return m_text;
}

}  // namespace insight
