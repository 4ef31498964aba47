#include "history/form_reading.h"

#include "history/moment.h"
#include "text.h"

namespace insight {

namespace {

ObjectRef refOf(const boost::json::object& form) {
  return {textIn(form, "type"), utf8ToWide(textIn(form, "id")), utf8ToWide(textIn(form, "name"))};
}

}  // namespace

std::string textIn(const boost::json::object& form, const char* key) {
  const boost::json::value* const value = form.if_contains(key);
  return value == nullptr || !value->is_string() ? std::string() : std::string(value->get_string());
}

std::optional<std::int64_t> numberIn(const boost::json::object& form, const char* key) {
  const boost::json::value* const value = form.if_contains(key);
  if (value == nullptr) return {};
  boost::system::error_code error;
  const auto number = value->to_number<std::int64_t>(error);
  if (error) return {};
  return number;
}

std::optional<std::int64_t> momentIn(const boost::json::object& form, const char* key) {
  return momentOf(textIn(form, key));
}

const boost::json::object* objectIn(const boost::json::object& form, const char* key) {
  const boost::json::value* const value = form.if_contains(key);
  return value == nullptr ? nullptr : value->if_object();
}

ObjectRef objectRefIn(const boost::json::object& form, const char* key) {
  const boost::json::object* const object = objectIn(form, key);
  return object == nullptr ? ObjectRef() : refOf(*object);
}

std::vector<ObjectRef> objectRefsIn(const boost::json::object& form, const char* key) {
  std::vector<ObjectRef> refs;
  const boost::json::value* const value = form.if_contains(key);
  if (value == nullptr || !value->is_array()) return refs;
  for (const boost::json::value& each : value->get_array()) {
    if (each.is_object()) refs.push_back(refOf(each.get_object()));
  }
  return refs;
}

}  // namespace insight
