#include "openapi/operations.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <cctype>
#include <string>
#include <utility>

#include "answers/problem.h"
#include "openapi/field_schemas.h"
#include "openapi/json_access.h"
#include "openapi/responses.h"
#include "text.h"

namespace host {

namespace {

using boost::json::array;
using boost::json::object;

constexpr unsigned kOk = 200;
constexpr unsigned kNoContent = 204;
constexpr unsigned kFirstRefusal = 400;
constexpr unsigned kAbsent = 404;
constexpr char kRead[] = "read";
constexpr char kExample[] = "recorded";

object jsonOf(const std::string& text) { return boost::json::parse(text).as_object(); }

/// Letters and digits of an id; everything else becomes an underscore.
std::string identifierOf(std::string id) {
  const auto isOther = [](unsigned char character) { return std::isalnum(character) == 0; };
  std::replace_if(id.begin(), id.end(), isOther, '_');
  return id;
}

array securityOf(const ApiEndpoint& endpoint) {
  if (!endpoint.role) return {};
  array security{object{{"token", array()}}};
  if (endpoint.takesTokenParameter) security.push_back(object{{"tokenParameter", array()}});
  return security;
}

std::string roleOf(const ApiEndpoint& endpoint) { return endpoint.role ? toText(*endpoint.role) : "none"; }

object startOf(const ApiEndpoint& endpoint, const std::string& tag, const std::string& summary,
               const std::string& description) {
  return {{"operationId", identifierOf(endpoint.operation)},
          {"tags", array{boost::json::string(tag)}},
          {"summary", summary},
          {"description", description},
          {"security", securityOf(endpoint)}};
}

object bodyOf(object schema, bool isRequired, const object& example) {
  object media{{"schema", std::move(schema)}};
  if (example.contains("body") && !example.at("body").is_null())
    media["examples"] = object{{kExample, object{{"value", example.at("body")}}}};
  return {{"required", isRequired}, {"content", object{{"application/json", std::move(media)}}}};
}

/// What clients may add to any request to the plug-in, and what comes of it.
void putConditions(const ApiEndpoint& endpoint, array& parameters, Responses& responses) {
  if (!endpoint.takesDryRun) return;
  const auto add = [&](const char* name) {
    parameters.push_back(object{{"$ref", std::string("#/components/parameters/") + name}});
  };
  add("DryRun");
  add("IfMatch");
  responses.addRehearsed(endpoint.planSchema == nullptr ? "Plan" : "ChangePlan");
  for (const unsigned status : {412U, 422U}) responses.addRefusal(status);
  if (endpoint.isChange) return;
  add("IfNoneMatch");
  add("Prefer");
  responses.addNotModified();
  responses.addRefusal(406);
}

void putExample(Responses& responses, const object& example) {
  if (!example.contains("status") || !example.contains("answer")) return;
  responses.addExample(example.at("status").to_number<unsigned>(), kExample, example.at("answer"));
}

object answerReference(const object& answer) {
  object reference{{"$ref", "#/components/schemas/" + textIn(answer, "schema")}};
  if (!isTrueIn(answer, "list")) return reference;
  return {{"type", "array"}, {"items", std::move(reference)}};
}

/// A change tells what has changed if it can still be told when it is done.
void putAnswers(Responses& responses, const object& route) {
  const object& answer = objectIn(route, "answer");
  if (!answer.empty()) responses.add(kOk, "What is asked for.", answerReference(answer));
  if (answer.empty() || textIn(route, "effect") != kRead) {
    responses.add(kNoContent,
                  answer.empty() ? "It is done." : "It is done; what has changed cannot be told.");
  }
}

void putRefusals(Responses& responses, const array& refusals) {
  for (const auto& element : refusals) {
    const object& refusal = element.as_object();
    const auto kind = refusalKindOf(utf8ToWide(textIn(refusal, "kind")));
    if (kind) responses.addRefusal(statusOf(*kind), textIn(refusal, "errorId"), textIn(refusal, "words"));
  }
}

/// What the library may say to an operation is told once in the document; here only by its statuses.
void putLibraryRefusals(Responses& responses, const object& route, const object& description) {
  if (listIn(route, "operations").empty()) return;
  for (const auto& element : listIn(description, "statuses")) {
    const auto kind = refusalKindOf(utf8ToWide(textIn(element.as_object(), "kind")));
    if (kind) responses.addRefusal(statusOf(*kind));
  }
}

object responsesOf(const ApiEndpoint& endpoint, const object& route, const object& description,
                   const object& example, array& parameters) {
  Responses responses(endpoint.role.has_value());
  putAnswers(responses, route);
  if (!listIn(route, "arguments").empty()) responses.addRefusal(kAbsent);
  putRefusals(responses, listIn(route, "refusals"));
  putRefusals(responses, listIn(description, "refusals"));
  putLibraryRefusals(responses, route, description);
  putConditions(endpoint, parameters, responses);
  putExample(responses, example);
  return responses.toJson();
}

/// What people ask for it by, and what is to be known ahead of a request.
object extensionOf(const ApiEndpoint& endpoint, const object& route) {
  object extension;
  for (const char* const key : {"noun", "verb", "effect"}) extension[key] = textIn(route, key);
  extension["role"] = roleOf(endpoint);
  const array& columns = listIn(objectIn(route, "answer"), "columns");
  if (!columns.empty()) extension["columns"] = columns;
  if (isTrueIn(route, "anyQuery")) extension["anyQuery"] = true;
  if (!listIn(route, "work").empty()) extension["work"] = route.at("work");
  return extension;
}

array parametersOf(const EndpointDocument& told) {
  array parameters;
  for (const DocumentedParameter& each : told.parameters) {
    parameters.push_back(parameterOf(each.name, each.isInPath ? "path" : "query", each.isInPath,
                                     each.description, jsonOf(each.schema)));
  }
  return parameters;
}

/// The group of commands, or the plug-in's key where a verb stands alone.
std::string tagOf(const object& route) {
  const std::string noun = textIn(route, "noun");
  return noun.empty() ? textIn(route, "key") : noun;
}

}  // namespace

object ownOperation(const ApiEndpoint& endpoint, const object& example) {
  const EndpointDocument& told = *endpoint.document;
  object operation =
      startOf(endpoint, told.noun.empty() ? told.verb : told.noun, told.summary, told.description);
  if (!told.body.empty()) operation["requestBody"] = bodyOf(jsonOf(told.body), told.needsBody, example);
  if (!told.parameters.empty()) operation["parameters"] = parametersOf(told);
  Responses responses(endpoint.role.has_value());
  for (const DocumentedAnswer& answer : told.answers) {
    if (answer.status >= kFirstRefusal) {
      responses.addRefusal(answer.status);
    } else {
      responses.add(answer.status, answer.description,
                    answer.schema.empty() ? object() : jsonOf(answer.schema), answer.mediaType);
    }
  }
  putExample(responses, example);
  operation["responses"] = responses.toJson();
  object extension{
      {"noun", told.noun}, {"verb", told.verb}, {"effect", told.effect}, {"role", roleOf(endpoint)}};
  if (!told.columns.empty()) extension["columns"] = array(told.columns.begin(), told.columns.end());
  operation["x-mirn"] = std::move(extension);
  return operation;
}

object sharedParameters() {
  return {
      {"DryRun", parameterOf("dryRun", "query", false, "Tells what the request would do, and does nothing.",
                             {{"type", "boolean"}})},
      {"IfMatch",
       parameterOf("If-Match", "header", false,
                   "Of a change the Mirn-Structure of an answer: it is made only if the machine is "
                   "still the same. Of a read tags, one of which the answer must have.",
                   {{"type", "string"}})},
      {"IfNoneMatch", parameterOf("If-None-Match", "header", false,
                                  "Tags of answers that the client has already.", {{"type", "string"}})},
      {"Prefer", parameterOf("Prefer", "header", false,
                             "wait=N with If-None-Match: the answer comes as soon as it is another, or N "
                             "seconds later as a 304.",
                             {{"type", "string"}})}};
}

object describedOperation(const ApiEndpoint& endpoint, const object& route, const object& description,
                          const object& example) {
  object operation = startOf(endpoint, tagOf(route), textIn(route, "summary"), textIn(route, "description"));
  array parameters = parametersOf(listIn(route, "arguments"), listIn(route, "query"));
  if (!listIn(route, "body").empty())
    operation["requestBody"] = bodyOf(bodySchema(listIn(route, "body")), true, example);
  operation["responses"] = responsesOf(endpoint, route, description, example, parameters);
  if (!parameters.empty()) operation["parameters"] = std::move(parameters);
  operation["x-mirn"] = extensionOf(endpoint, route);
  return operation;
}

object undescribedOperation(const ApiEndpoint& endpoint) {
  object operation =
      startOf(endpoint, "plugin", wideToUtf8(endpoint.path),
              "The plug-in does not describe itself: anything below this path is handed to it.");
  array parameters{parameterOf(kRestParameter, "path", true, "Any number of segments, none included.",
                               {{"type", "string"}})};
  operation["requestBody"] = bodyOf({}, false, {});
  Responses responses(endpoint.role.has_value());
  responses.add(kOk, "What the plug-in answers.", {{"description", "Anything."}});
  responses.add(kNoContent, "The plug-in has no answer.");
  for (const unsigned status : {404U, 409U, 422U}) responses.addRefusal(status);
  putConditions(endpoint, parameters, responses);
  operation["parameters"] = std::move(parameters);
  operation["responses"] = responses.toJson();
  operation["x-mirn"] = object{{"noun", ""},
                               {"verb", ""},
                               {"effect", endpoint.isChange ? "destroys" : kRead},
                               {"role", roleOf(endpoint)}};
  return operation;
}

}  // namespace host
