#ifndef MIRN_INSIGHT_HEALTH_HEALTH_FORM_H
#define MIRN_INSIGHT_HEALTH_HEALTH_FORM_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "health/health_report.h"

namespace insight {

/// Since when a cause is there, by its id, in milliseconds since 1970, UTC; nothing where nobody has watched.
using SinceWhen = std::function<std::optional<std::uint64_t>(const std::string& id)>;

boost::json::array formOf(const std::vector<NextStep>& steps);
boost::json::object formOf(const Cause& cause, std::optional<std::uint64_t> since = {});
boost::json::object formOf(const HealthReport& report, const SinceWhen& sinceWhen = {});

}  // namespace insight

#endif
