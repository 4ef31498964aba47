#ifndef MIRN_INSIGHT_READINESS_READINESS_FORM_H
#define MIRN_INSIGHT_READINESS_READINESS_FORM_H

#include <boost/json/object.hpp>

#include "readiness/readiness_report.h"

namespace insight {

/// For clients.
boost::json::object formOf(const ReadinessReport& report);

}  // namespace insight

#endif
