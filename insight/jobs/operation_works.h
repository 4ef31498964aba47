#ifndef MIRN_INSIGHT_JOBS_OPERATION_WORKS_H
#define MIRN_INSIGHT_JOBS_OPERATION_WORKS_H

#include <set>
#include <string>
#include <utility>

#include "ServiceObject.h"

namespace insight {

/// Which work an operation may begin, or stop: its id with a job's kind, {"rebuildVolume", "rebuild"}.
using OperationWorks = std::set<std::pair<std::string, std::string>>;

/// As a plug-in's description tells, `ovra::described_plugin_1::describe`.
OperationWorks operationWorksOf(const ovra::data_transfer::ServiceObject& description);

}  // namespace insight

#endif
