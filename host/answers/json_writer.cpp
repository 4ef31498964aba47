#include "answers/json_writer.h"

#include <boost/json/array.hpp>
#include <boost/json/monotonic_resource.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <cmath>
#include <cstdint>
#include <utility>

#include "text.h"

namespace host {

namespace {

using boost::json::storage_ptr;
using boost::json::value;
using ovra::data_transfer::ServiceObject;

value toJson(const ServiceObject& object, const storage_ptr& storage);

value objectToJson(const ServiceObject& object, const storage_ptr& storage) {
  boost::json::object result(storage);
  for (const auto& child : object) result.emplace(wideToUtf8(child.key), toJson(*child.value, storage));
  return value(std::move(result));
}

value arrayToJson(const ServiceObject& object, const storage_ptr& storage) {
  boost::json::array result(storage);
  for (const auto& child : object) result.push_back(toJson(*child.value, storage));
  return value(std::move(result));
}

value realToJson(double real, const storage_ptr& storage) {
  return std::isfinite(real) ? value(real, storage) : value(nullptr, storage);
}

/// By the index of the alternative.
value toJson(const ServiceObject& object, const storage_ptr& storage) {
  switch (object.which()) {
    case 1:
      return value(object.toBool(), storage);
    case 2:
      return value(object.toInt64(), storage);
    case 3:
      return value(static_cast<std::uint64_t>(object.toInt64()), storage);  // the conversion keeps all bits
    case 4:
      return realToJson(object.asReal(), storage);
    case 5:
      return value(wideToUtf8(object.toString()), storage);
    case 6:
      return objectToJson(object, storage);
    case 7:
      return arrayToJson(object, storage);
    default:
      return value(nullptr, storage);
  }
}

}  // namespace

std::string writeJson(const ServiceObject& object) {
  boost::json::monotonic_resource storage;
  return boost::json::serialize(toJson(object, &storage));
}

}  // namespace host
