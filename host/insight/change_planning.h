#ifndef MIRN_HOST_INSIGHT_CHANGE_PLANNING_H
#define MIRN_HOST_INSIGHT_CHANGE_PLANNING_H

#include <memory>

#include "api/change_plan.h"
#include "insight/insight_desk.h"

namespace host {

/// What insight tells of the plug-in's changes ahead; nothing without a desk.
ChangePlans changePlansOf(const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
