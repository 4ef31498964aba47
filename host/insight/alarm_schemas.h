#ifndef MIRN_HOST_INSIGHT_ALARM_SCHEMAS_H
#define MIRN_HOST_INSIGHT_ALARM_SCHEMAS_H

#include <string>

/// JSON Schemas of what is answered under "alarms".

namespace host {

std::string alarmSchema();
std::string alarmsSchema();

}  // namespace host

#endif
