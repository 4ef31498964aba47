#ifndef MIRN_INSIGHT_METRICS_MACHINE_METRICS_H
#define MIRN_INSIGHT_METRICS_MACHINE_METRICS_H

#include "metric_text.h"
#include "metrics/state_words.h"
#include "view/machine_view.h"

namespace insight {

/// Everything to be measured of a machine that is the same for as long as its revision stays: the objects,
/// their states and sizes, and the work on them. Of several objects with one id the first counts.
void writeMachine(MetricText& text, const MachineView& machine, const MachineWords& words);

}  // namespace insight

#endif
