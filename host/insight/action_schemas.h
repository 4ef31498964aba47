#ifndef MIRN_HOST_INSIGHT_ACTION_SCHEMAS_H
#define MIRN_HOST_INSIGHT_ACTION_SCHEMAS_H

#include <string>

/// JSON Schemas of what is answered under "actions".

namespace host {

std::string actionsSchema();
std::string candidatesSchema();

}  // namespace host

#endif
