#ifndef MIRN_HOST_OPENAPI_JSON_ACCESS_H
#define MIRN_HOST_OPENAPI_JSON_ACCESS_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <string>
#include <string_view>

namespace host {

/// What a description has under a key; a plug-in may leave any of it out.

/// Empty without one.
inline std::string textIn(const boost::json::object& owner, std::string_view key) {
  const boost::json::value* const found = owner.if_contains(key);
  return found != nullptr && found->is_string() ? std::string(found->get_string()) : std::string();
}

inline bool isTrueIn(const boost::json::object& owner, std::string_view key) {
  const boost::json::value* const found = owner.if_contains(key);
  return found != nullptr && found->is_bool() && found->get_bool();
}

/// Empty without one.
inline const boost::json::object& objectIn(const boost::json::object& owner, std::string_view key) {
  static const boost::json::object kNone;
  const boost::json::value* const found = owner.if_contains(key);
  return found != nullptr && found->is_object() ? found->get_object() : kNone;
}

/// Empty without one.
inline const boost::json::array& listIn(const boost::json::object& owner, std::string_view key) {
  static const boost::json::array kNone;
  const boost::json::value* const found = owner.if_contains(key);
  return found != nullptr && found->is_array() ? found->get_array() : kNone;
}

}  // namespace host

#endif
