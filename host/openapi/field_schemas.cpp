#include "openapi/field_schemas.h"

#include <algorithm>
#include <array>
#include <boost/json/value.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "openapi/json_access.h"

namespace host {

namespace {

using boost::json::array;
using boost::json::object;

constexpr std::string_view kExtension = "x-mirn";

/// Of `from` the members `keys` that are there.
template <std::size_t kCount>
object membersOf(const object& from, const std::array<std::string_view, kCount>& keys) {
  object kept;
  for (const std::string_view key : keys) {
    if (const auto* const value = from.if_contains(key)) kept[key] = *value;
  }
  return kept;
}

void putExtension(object& schema, object extension) {
  if (!extension.empty()) schema[kExtension] = std::move(extension);
}

constexpr std::array<std::string_view, 4> kAnswerFacts{"unit", "refersTo", "progress", "condition"};
constexpr std::array<std::string_view, 4> kFieldFacts{"unit", "refersTo", "candidates", "when"};

/// A number may be written as text: a body that tells it so has digits, a query has nothing else anyway.
object valueSchema(const object& field, bool isText) {
  const std::string type = textIn(field, "type");
  const bool isBounded = field.contains("least");
  if (type == "list") return {{"type", "array"}, {"items", object{{"type", "string"}}}};
  if (type == "boolean") return {{"type", "boolean"}};
  if (type != "number" && (!isText || !isBounded)) return {{"type", "string"}};
  object schema{{"type", "integer"}};
  if (isBounded) {
    schema.insert({{"minimum", field.at("least")}, {"maximum", field.at("most")}});
  } else {
    schema["minimum"] = 0;
  }
  return schema;
}

object fieldSchema(const object& field, bool isQuery) {
  object schema = valueSchema(field, isQuery);
  if (!isQuery) schema["description"] = textIn(field, "help");
  if (const auto* const words = field.if_contains("words")) schema["enum"] = *words;
  putExtension(schema, membersOf(field, kFieldFacts));
  return schema;
}

/// Holds for a body with the member of the condition, and with its word in it.
object conditionSchema(const object& when) {
  const std::string field = textIn(when, "field");
  object schema{{"required", array{boost::json::string(field)}}};
  if (when.contains("word")) schema["properties"] = object{{field, object{{"const", when.at("word")}}}};
  return schema;
}

/// Fields under one condition, which are needed, or allowed at least, where it holds, and there alone.
struct ConditionalFields {
  object when;
  array required;
  object others;
};

std::vector<ConditionalFields> conditionalFields(const array& fields) {
  std::vector<ConditionalFields> groups;
  for (const auto& element : fields) {
    const object& field = element.as_object();
    const object& when = objectIn(field, "when");
    if (when.empty()) continue;
    auto group = std::find_if(groups.begin(), groups.end(),
                              [&](const ConditionalFields& other) { return other.when == when; });
    if (group == groups.end()) group = groups.insert(groups.end(), {when, {}, {}});
    if (isTrueIn(field, "required")) group->required.push_back(field.at("name"));
    group->others[textIn(field, "name")] = false;
  }
  return groups;
}

array conditionsOf(const array& fields) {
  array conditions;
  for (const ConditionalFields& group : conditionalFields(fields)) {
    object condition{{"if", conditionSchema(group.when)}};
    if (!group.required.empty()) condition["then"] = object{{"required", group.required}};
    condition["else"] = object{{"properties", group.others}};
    conditions.push_back(std::move(condition));
  }
  return conditions;
}

}  // namespace

object answerSchema(const object& described) {
  object schema = described;
  for (const std::string_view key : kAnswerFacts) schema.erase(key);
  for (const char* const key : {"items", "additionalProperties"}) {
    if (const auto* const found = described.if_contains(key); found != nullptr && found->is_object())
      schema[key] = answerSchema(found->get_object());
  }
  if (!objectIn(described, "properties").empty()) {
    object properties;
    for (const auto& member : objectIn(described, "properties"))
      properties[member.key()] = answerSchema(member.value().as_object());
    schema["properties"] = std::move(properties);
  }
  putExtension(schema, membersOf(described, kAnswerFacts));
  return schema;
}

object bodySchema(const array& fields) {
  object properties;
  array required;
  for (const auto& element : fields) {
    const object& field = element.as_object();
    properties[textIn(field, "name")] = fieldSchema(field, false);
    if (isTrueIn(field, "required") && !field.contains("when")) required.push_back(field.at("name"));
  }
  object schema{{"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}};
  if (!required.empty()) schema["required"] = std::move(required);
  array conditions = conditionsOf(fields);
  if (!conditions.empty()) schema["allOf"] = std::move(conditions);
  return schema;
}

object parameterOf(const std::string& name, const char* place, bool isRequired, std::string description,
                   object schema) {
  return {{"name", name},
          {"in", place},
          {"required", isRequired},
          {"description", std::move(description)},
          {"schema", std::move(schema)}};
}

array parametersOf(const array& arguments, const array& query) {
  array parameters;
  for (const auto& element : arguments) {
    const object& argument = element.as_object();
    const std::string type = textIn(argument, "refersTo");
    object schema{{"type", "string"}};
    putExtension(schema, membersOf(argument, kFieldFacts));
    parameters.push_back(parameterOf(textIn(argument, "name"), "path", true,
                                     type.empty() ? "Names what is meant." : "The id of the " + type + ".",
                                     std::move(schema)));
  }
  for (const auto& element : query) {
    const object& field = element.as_object();
    parameters.push_back(parameterOf(textIn(field, "name"), "query", isTrueIn(field, "required"),
                                     textIn(field, "help"), fieldSchema(field, true)));
  }
  return parameters;
}

}  // namespace host
