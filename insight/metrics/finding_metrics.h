#ifndef MIRN_INSIGHT_METRICS_FINDING_METRICS_H
#define MIRN_INSIGHT_METRICS_FINDING_METRICS_H

#include <cstdint>

#include "history/history.h"
#include "metric_text.h"
#include "service/insight_service.h"

namespace insight {

/// Of what a look at the machine has found: health, alarms, jobs, the journal and the picture itself. `nowMs`
/// is milliseconds since 1970, UTC.
void writeFindings(MetricText& text, const Findings& findings, std::int64_t nowMs);

/// Of what is kept of the past. What cannot be read is left out.
void writeHistory(MetricText& text, History& history);

}  // namespace insight

#endif
