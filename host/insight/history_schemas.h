#ifndef MIRN_HOST_INSIGHT_HISTORY_SCHEMAS_H
#define MIRN_HOST_INSIGHT_HISTORY_SCHEMAS_H

#include <string>
#include <vector>

namespace host {

extern const std::vector<std::string> kEntryKinds;

/// JSON Schema of what "history" answers.
std::string historySchema();

}  // namespace host

#endif
