#include "commands/for_people.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "answers/record.h"
#include "arguments/values.h"
#include "commands/findings.h"
#include "document/schema.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr char kProgram[] = "mirnctl ";

bool hasAll(const json::object& object, std::initializer_list<const char*> members) {
  for (const char* const member : members) {
    if (!object.contains(member)) return false;
  }
  return true;
}

void tellStep(const Context& context, json::value& step) {
  if (!step.is_object() || !hasAll(step.get_object(), {"operation", "arguments"})) return;
  const std::string line =
      commandLineOf(context, textAt(step, "operation"), objectOf(step.get_object(), "arguments"));
  step = line.empty() ? json::value(step.get_object().at("operation")) : json::value(line);
}

/// What an action on `object` is called here.
void tellAction(const Context& context, json::object& action, const json::value* object) {
  const Operation* const operation = context.document.find(textOf(action, "operation"));
  if (operation == nullptr) return;
  json::object arguments;
  for (const Field& field : operation->fields) {
    const bool isIt =
        field.place == Place::kPath && object != nullptr && field.refersTo == textAt(*object, "type");
    if (isIt) arguments[field.name] = textAt(*object, "id");
  }
  const std::string argument = textOf(action, "argument");
  if (!argument.empty()) arguments[argument] = textOf(action, "word");
  const json::value needs = action["needs"];
  for (const json::value& each : needs.is_array() ? needs.get_array() : json::array()) {
    arguments[textAt(each, "name")] = "";  // shown as what is to be told
  }
  action["operation"] = commandLineOf(context, operation->id, arguments).substr(sizeof(kProgram) - 1);
  action["word"] = nullptr;
}

void tell(const Context& context, json::value& value, const json::value* object);

void tellMembers(const Context& context, json::object& members, const json::value* outer) {
  if (hasAll(members, {"row", "at", "details"})) members["details"] = wordsOfEntry(members);
  if (hasAll(members, {"operation", "verdict", "needs"})) tellAction(context, members, outer);
  members.erase("position");
  members.erase("libraryDecides");
  const json::value* const object = members.if_contains("object");
  for (auto& member : members) tell(context, member.value(), object);
}

/// `object` is that which the record around it is about.
void tell(const Context& context, json::value& value, const json::value* object) {
  if (value.is_object()) {
    tellStep(context, value);
    if (value.is_object()) tellMembers(context, value.get_object(), object);
  } else if (value.is_array()) {
    for (json::value& each : value.get_array()) tell(context, each, object);
  }
}

}  // namespace

json::value forPeople(const Context& context, const json::value& answer) {
  json::value told = answer;
  tell(context, told, nullptr);
  return told;
}

}  // namespace mirnctl
