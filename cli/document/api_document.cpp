#include "document/api_document.h"

#include <algorithm>
#include <boost/json/parse.hpp>
#include <boost/system/system_error.hpp>

#include "document/schema.h"
#include "exit_status.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr std::string_view kMethods[] = {"get", "put", "post", "delete"};
constexpr std::string_view kJson = "application/json";
constexpr std::string_view kGzip = "application/gzip";

json::object parsed(std::string_view text) {
  boost::system::error_code error;
  const json::value value = json::parse({text.data(), text.size()}, error);
  if (error || !value.is_object() || !value.get_object().contains("paths")) {
    throw Failure(ExitStatus::kInternal, "the service's description of itself is no OpenAPI document");
  }
  return value.get_object();
}

Place placeOf(const std::string& in) { return in == "path" ? Place::kPath : Place::kQuery; }

void addParameters(const Schemas& schemas, const json::object& described, Operation& operation) {
  const json::value* const parameters = described.if_contains("parameters");
  if (parameters == nullptr || !parameters->is_array()) return;
  for (const json::value& each : parameters->get_array()) {
    const json::object& parameter = schemas.resolved(each);
    const std::string in = textOf(parameter, "in");
    const std::string name = textOf(parameter, "name");
    if (name == "dryRun") operation.takesDryRun = true;
    const bool isOurs = (in == "path" || in == "query") && name != "dryRun";
    const json::value* const schema = parameter.if_contains("schema");
    if (!isOurs || schema == nullptr) continue;
    const json::value* const required = parameter.if_contains("required");
    const bool isRequired = required != nullptr && required->is_bool() && required->get_bool();
    operation.fields.push_back(schemas.field(name, placeOf(in), isRequired, parameter, *schema));
  }
}

void addBody(const Schemas& schemas, const json::object& described, Operation& operation) {
  const json::object& body = objectOf(objectOf(objectOf(described, "requestBody"), "content"), kJson);
  const json::value* const schema = body.if_contains("schema");
  if (schema == nullptr) return;
  for (Field& field : schemas.bodyFields(*schema)) operation.fields.push_back(std::move(field));
}

void addAnswer(const Schemas& schemas, const json::object& described, Operation& operation) {
  for (const auto& response : objectOf(described, "responses")) {
    if (response.key().empty() || response.key().front() != '2') continue;
    const json::object& content = objectOf(schemas.resolved(response.value()), "content");
    operation.answersFile = content.contains(kGzip);
    const json::value* const schema = objectOf(content, kJson).if_contains("schema");
    if (schema == nullptr) continue;
    operation.answersJson = true;
    schemas.describeAnswer(*schema, operation);
    return;
  }
}

Operation operationOf(const Schemas& schemas, std::string_view method, std::string_view path,
                      const json::object& described) {
  const json::object& ours = objectOf(described, "x-mirn");
  Operation operation;
  operation.id = textOf(described, "operationId");
  operation.noun = textOf(ours, "noun");
  operation.verb = textOf(ours, "verb");
  operation.method = method;
  std::transform(operation.method.begin(), operation.method.end(), operation.method.begin(),
                 [](char c) { return static_cast<char>(c - 'a' + 'A'); });
  operation.path = path;
  operation.summary = textOf(described, "summary");
  operation.description = textOf(described, "description");
  operation.effect = textOf(ours, "effect");
  operation.role = textOf(ours, "role");
  operation.columns = wordsOf(ours, "columns");
  addParameters(schemas, described, operation);
  addBody(schemas, described, operation);
  addAnswer(schemas, described, operation);
  return operation;
}

}  // namespace

ApiDocument::ApiDocument(std::string_view text) {
  const json::object document = parsed(text);
  const Schemas schemas(document);
  m_version = textOf(objectOf(document, "info"), "version");
  for (const auto& path : objectOf(document, "paths")) {
    const json::object& methods = schemas.resolved(path.value());
    for (const std::string_view method : kMethods) {
      const json::object& described = objectOf(methods, method);
      if (textOf(described, "operationId").empty()) continue;
      m_operations.push_back(operationOf(schemas, method, path.key(), described));
    }
  }
}

const Operation* ApiDocument::find(std::string_view id) const {
  const auto found = std::find_if(m_operations.begin(), m_operations.end(),
                                  [id](const Operation& each) { return each.id == id; });
  return found == m_operations.end() ? nullptr : &*found;
}

const Operation* ApiDocument::find(std::string_view noun, std::string_view verb) const {
  const auto found = std::find_if(m_operations.begin(), m_operations.end(), [&](const Operation& each) {
    return each.noun == noun && each.verb == verb;
  });
  return found == m_operations.end() ? nullptr : &*found;
}

}  // namespace mirnctl
