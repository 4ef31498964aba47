#ifndef MIRN_INSIGHT_VIEW_OBJECT_FORM_H
#define MIRN_INSIGHT_VIEW_OBJECT_FORM_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <cstdint>
#include <vector>

#include "plugin_extensions.h"
#include "view/object_ref.h"

/// What all answers of insight have alike. Texts are UTF-8.

namespace insight {

/// `id` is null where there is none.
boost::json::object formOf(const ObjectRef& object);
boost::json::array formOf(const std::vector<ObjectRef>& objects);
boost::json::object formOf(const ovra::PluginPosition& position);

/// As RFC 3339 writes milliseconds since 1970, UTC.
boost::json::string timeForm(std::uint64_t milliseconds);

}  // namespace insight

#endif
