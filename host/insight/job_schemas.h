#ifndef MIRN_HOST_INSIGHT_JOB_SCHEMAS_H
#define MIRN_HOST_INSIGHT_JOB_SCHEMAS_H

#include <string>

/// JSON Schemas of what is answered under "jobs".

namespace host {

std::string jobSchema();
std::string jobsSchema();
std::string jobStatisticsSchema();

}  // namespace host

#endif
