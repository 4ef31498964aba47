#ifndef MIRN_HOST_INSIGHT_INSIGHT_WITNESS_H
#define MIRN_HOST_INSIGHT_INSIGHT_WITNESS_H

#include <memory>

#include "api/audit.h"
#include "insight/insight_desk.h"

namespace host {

/// Has the history keep who changed what. Null where there is no desk.
std::unique_ptr<ChangeWitness> witnessOf(const std::shared_ptr<InsightDesk>& desk);

}  // namespace host

#endif
