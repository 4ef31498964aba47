#ifndef MIRN_HOST_INSIGHT_HISTORY_QUESTION_H
#define MIRN_HOST_INSIGHT_HISTORY_QUESTION_H

#include <vector>

#include "api/endpoint_document.h"
#include "history/history_query.h"
#include "identity/role.h"
#include "insight/query_parameters.h"

namespace host {

/// What somebody may ask of the history. Parameters that make no sense raise a `Refusal` 400; asking for what
/// clients did, which only who administers may see, a 403.
insight::HistoryQuery historyQueryIn(const Parameters& parameters, Role role);

/// As documents tell of the parameters.
std::vector<DocumentedParameter> historyParameters();

}  // namespace host

#endif
