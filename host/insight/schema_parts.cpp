#include "insight/schema_parts.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

namespace host {

const std::vector<std::string> kObjectTypes{"volume", "disk", "array", "controller", "port", "service"};
const std::vector<std::string> kSeverityWords{"ok", "info", "warning", "unknown", "critical"};

std::string wordList(const std::vector<std::string>& words) {
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "\"" : ", \"") + word + '"';
  return '[' + list + ']';
}

std::string wordSchema(const std::vector<std::string>& words) {
  return R"({"type": "string", "enum": )" + wordList(words) + '}';
}

std::string recordSchema(const std::string& members) {
  const boost::json::object properties = boost::json::parse('{' + members + '}').as_object();
  boost::json::array names;
  for (const auto& property : properties) names.emplace_back(property.key());
  return boost::json::serialize(boost::json::object{
      {"type", "object"}, {"properties", properties}, {"required", names}, {"additionalProperties", false}});
}

std::string objectSchema() {
  return recordSchema(R"(
    "type": )" + wordSchema(kObjectTypes) +
                      R"(,
    "id": {"type": ["string", "null"], "description": "Null for the service itself."},
    "name": {"type": "string"})");
}

std::string positionSchema() {
  return R"({
  "type": "object",
  "description": "The picture that is told of.",
  "properties": {
    "epoch": {"type": "string"},
    "revision": {"type": "integer", "minimum": 0},
    "structure": {"type": "integer", "minimum": 0},
    "sequence": {"type": "integer", "minimum": 0}
  },
  "required": ["epoch", "revision", "structure", "sequence"],
  "additionalProperties": false
})";
}

std::string severitySchema() { return wordSchema(kSeverityWords); }

std::string listSchema(const std::string& items, const std::string& description) {
  return R"({"type": "array", "description": ")" + description + R"(", "items": )" + items + "}";
}

std::string tableSchema(const std::string& items, const std::string& description,
                        const std::vector<std::string>& columns) {
  return R"({"type": "array", "description": ")" + description + R"(", "x-mirn": {"columns": )" +
         wordList(columns) + R"(}, "items": )" + items + "}";
}

std::string secondsSchema(const std::string& type, const std::string& description) {
  return R"({"type": )" + type + R"(, "minimum": 0, "description": ")" + description +
         R"(", "x-mirn": {"unit": "s"}})";
}

std::string momentSchema(const std::string& description) {
  return R"({"type": "string", "format": "date-time", "description": ")" + description + "\"}";
}

std::string maybeMomentSchema(const std::string& description) {
  return R"({"type": ["string", "null"], "format": "date-time", "description": ")" + description + "\"}";
}

std::string nextSchema() {
  return R"({"type": ["string", "null"], "description": "The cursor of the next page; null on the last."})";
}

}  // namespace host
