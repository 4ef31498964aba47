#ifndef MIRN_HOST_METRICS_PROCESS_METRICS_H
#define MIRN_HOST_METRICS_PROCESS_METRICS_H

#include <cstdint>
#include <optional>

#include "metric_text.h"

namespace host {

/// What this process takes. Nothing where the system does not tell.
struct ProcessLoad {
  std::optional<double> processorSeconds;
  std::optional<double> startedAt;  ///< Seconds since 1970, UTC.
  std::optional<std::uint64_t> residentBytes;
  std::optional<std::uint64_t> virtualBytes;
  std::optional<std::uint64_t> descriptors;  ///< On Windows handles.
  std::optional<std::uint64_t> mostDescriptors;
};

/// One source a system.
ProcessLoad processLoad();

/// Under the names that everybody's processes have.
void writeProcess(MetricText& text, const ProcessLoad& load);

}  // namespace host

#endif
