#ifndef MIRN_HOST_INSIGHT_HEALTH_SCHEMAS_H
#define MIRN_HOST_INSIGHT_HEALTH_SCHEMAS_H

#include <string>

namespace host {

/// JSON Schema of what "health" answers.
std::string healthSchema();

/// Of what to do next.
std::string stepSchema();

/// The members of a cause, for `recordSchema`, where `since` is told by `sinceSchema`.
std::string causeMembers(const std::string& sinceSchema);

}  // namespace host

#endif
