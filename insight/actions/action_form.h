#ifndef MIRN_INSIGHT_ACTIONS_ACTION_FORM_H
#define MIRN_INSIGHT_ACTIONS_ACTION_FORM_H

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <optional>
#include <string>
#include <vector>

#include "actions/candidates.h"
#include "actions/look.h"
#include "view/object_ref.h"

namespace insight {

boost::json::object formOf(const ObjectRef& object, const std::vector<Action>& actions);

/// A page of candidates; `next` is the cursor of the one behind it, empty on the last.
boost::json::object formOf(const std::vector<Candidate>& candidates, const std::optional<SizeBounds>& bounds,
                           const std::string& next);

}  // namespace insight

#endif
