#ifndef MIRN_INSIGHT_HISTORY_FORM_READING_H
#define MIRN_INSIGHT_HISTORY_FORM_READING_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "view/object_ref.h"

/// Members of forms that were kept, and may lack them.
namespace insight {

std::string textIn(const boost::json::object& form, const char* key);
std::optional<std::int64_t> numberIn(const boost::json::object& form, const char* key);
std::optional<std::int64_t> momentIn(const boost::json::object& form, const char* key);
/// Null where there is none.
const boost::json::object* objectIn(const boost::json::object& form, const char* key);
/// The reverse of its form; empty where there is none.
ObjectRef objectRefIn(const boost::json::object& form, const char* key);
std::vector<ObjectRef> objectRefsIn(const boost::json::object& form, const char* key);

}  // namespace insight

#endif
