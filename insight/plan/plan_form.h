#ifndef MIRN_INSIGHT_PLAN_PLAN_FORM_H
#define MIRN_INSIGHT_PLAN_PLAN_FORM_H

#include <boost/json/object.hpp>

#include "plan/plan.h"

namespace insight {

/// For clients. `structure` is the position as If-Match takes it, with its quotation marks.
boost::json::object formOf(const Plan& plan);

}  // namespace insight

#endif
