#ifndef MIRN_HOST_INSIGHT_READINESS_SCHEMAS_H
#define MIRN_HOST_INSIGHT_READINESS_SCHEMAS_H

#include <string>

namespace host {

/// JSON Schema of what "readiness" answers.
std::string readinessSchema();

}  // namespace host

#endif
