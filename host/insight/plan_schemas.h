#ifndef MIRN_HOST_INSIGHT_PLAN_SCHEMAS_H
#define MIRN_HOST_INSIGHT_PLAN_SCHEMAS_H

#include <string>

namespace host {

/// JSON Schema of what the plan of a change tells beyond the plug-in's rehearsal. Stays for good.
const std::string& planSchema();

}  // namespace host

#endif
