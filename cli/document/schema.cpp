#include "document/schema.h"

#include <algorithm>
#include <boost/json/value.hpp>

namespace mirnctl {

namespace json = boost::json;

namespace {

const json::object kNothing;

/// Schemas nest; those of a document that leads in circles do so without end.
constexpr std::size_t kDeepestName = 64;

bool hasWord(const json::value* words, std::string_view word) {
  if (words == nullptr) return false;
  if (words->is_string()) return std::string_view(words->get_string()) == word;
  if (!words->is_array()) return false;
  return std::any_of(words->get_array().begin(), words->get_array().end(), [word](const json::value& each) {
    return each.is_string() && std::string_view(each.get_string()) == word;
  });
}

ValueKind kindOf(const json::object& schema) {
  const json::value* const type = schema.if_contains("type");
  if (hasWord(type, "array")) return ValueKind::kList;
  if (hasWord(type, "boolean")) return ValueKind::kBoolean;
  if (hasWord(type, "string")) return ValueKind::kText;
  if (hasWord(type, "integer") || hasWord(type, "number")) return ValueKind::kNumber;
  return ValueKind::kJson;
}

}  // namespace

std::vector<std::string> wordsOf(const json::object& object, std::string_view member) {
  std::vector<std::string> words;
  const json::value* const list = object.if_contains(member);
  if (list == nullptr || !list->is_array()) return words;
  for (const json::value& word : list->get_array()) {
    if (word.is_string()) words.emplace_back(word.get_string());
  }
  return words;
}

std::string textOf(const json::object& object, std::string_view member) {
  const json::value* const value = object.if_contains(member);
  return value != nullptr && value->is_string() ? std::string(value->get_string()) : std::string();
}

const json::object& objectOf(const json::object& object, std::string_view member) {
  const json::value* const value = object.if_contains(member);
  return value != nullptr && value->is_object() ? value->get_object() : kNothing;
}

const json::object& Schemas::resolved(const json::value& value) const {
  if (!value.is_object()) return kNothing;
  const std::string reference = textOf(value.get_object(), "$ref");
  if (reference.empty()) return value.get_object();
  const json::object* place = &m_document;
  for (std::size_t begin = reference.find('/'); begin != std::string::npos;) {
    const std::size_t end = reference.find('/', begin + 1);
    place = &objectOf(*place, reference.substr(begin + 1, end - begin - 1));
    begin = end;
  }
  return *place;
}

Field Schemas::field(std::string_view name, Place place, bool isRequired, const json::object& described,
                     const json::value& value) const {
  const json::object& schema = resolved(value);
  const json::object& ours = objectOf(schema, "x-mirn");
  Field field;
  field.name = name;
  field.place = place;
  field.kind = kindOf(schema);
  field.isRequired = isRequired;
  field.takesNull = hasWord(schema.if_contains("type"), "null");
  field.refersTo = textOf(ours, "refersTo");
  field.unit = textOf(ours, "unit");
  field.help = textOf(described, "description");
  field.words = wordsOf(schema, "enum");
  return field;
}

std::vector<Field> Schemas::bodyFields(const json::value& value) const {
  const json::object& schema = resolved(value);
  std::vector<Field> fields;
  for (const auto& member : objectOf(schema, "properties")) {
    const json::object& described = resolved(member.value());
    fields.push_back(field(member.key(), Place::kBody, hasWord(schema.if_contains("required"), member.key()),
                           described, member.value()));
  }
  return fields;
}

void Schemas::addAnswerFields(const json::object& schema, const std::string& prefix,
                              std::vector<AnswerField>& fields) const {
  if (prefix.size() > kDeepestName) return;
  for (const auto& member : objectOf(schema, "properties")) {
    const json::object& described = resolved(member.value());
    const std::string name = prefix + std::string(member.key());
    if (described.contains("properties")) {
      addAnswerFields(described, name + '.', fields);
      continue;
    }
    const json::object& ours = objectOf(described, "x-mirn");
    AnswerField field{name, textOf(ours, "unit"), textOf(described, "description")};
    field.columns = wordsOf(ours, "columns");
    if (!field.columns.empty()) addAnswerFields(resolved(described.at("items")), {}, field.parts);
    fields.push_back(std::move(field));
  }
}

/// The schema of one record of the answer.
const json::object& Schemas::record(const json::object& schema, Operation& operation) const {
  if (const json::value* const items = schema.if_contains("items")) {
    operation.answersList = true;
    return resolved(*items);
  }
  const json::object& members = objectOf(schema, "properties");
  const json::object& items = objectOf(members, "items");
  const bool isList = members.contains("next") || members.size() == 1;
  if (!isList || !hasWord(items.if_contains("type"), "array")) return schema;
  operation.answersList = true;
  operation.answersPage = members.contains("next");
  return resolved(*items.if_contains("items"));
}

void Schemas::describeAnswer(const json::value& value, Operation& operation) const {
  const json::object* schema = &resolved(value);
  // The answer of a dry run is another one.
  if (const json::value* const forms = schema->if_contains("anyOf"); forms != nullptr && forms->is_array()) {
    if (forms->get_array().empty()) return;
    schema = &resolved(forms->get_array().front());
  }
  addAnswerFields(record(*schema, operation), {}, operation.answer);
}

}  // namespace mirnctl
