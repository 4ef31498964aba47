#include "openapi/responses.h"

#include <algorithm>
#include <array>
#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <utility>

#include "answers/problem.h"

namespace host {

namespace {

using boost::json::object;

constexpr unsigned kOk = 200;
constexpr char kProblemType[] = "application/problem+json";

/// An answer that operations have in common.
struct SharedResponse {
  unsigned status;
  const char* name;
  const char* description;
  bool isEverywhere;  ///< Every operation has it.
};

constexpr std::array<SharedResponse, 17> kShared{
    {{400, "BadRequest", "The request is not well formed, or what it asks for makes no sense.", true},
     {401, "Unauthorized", "It takes a token that the host knows.", false},
     {403, "Forbidden", "The token's role is too small for this, or its user is not let in.", false},
     {404, "NotFound", "There is nothing under this path, or no object with this id.", false},
     {405, "MethodNotAllowed", "The path takes other methods, which Allow lists.", false},
     {406, "NotAcceptable", "The client takes the answer neither plain nor packed by gzip.", false},
     {409, "Conflict", "What is asked for does not go with the state that things are in.", false},
     {412, "PreconditionFailed", "What If-Match names is not there any more.", false},
     {413, "ContentTooLarge", "The body is larger than the host takes.", true},
     {414, "TargetTooLong", "The path with its query is longer than the host takes.", true},
     {415, "UnsupportedMediaType", "The body is not JSON, or it is encoded.", true},
     {417, "ExpectationFailed", "The host meets no other expectation than 100-continue.", true},
     {421, "MisdirectedRequest", "The request names a host that this one does not go by.", true},
     {422, "Unprocessable", "This machine or this object cannot do what is asked for.", false},
     {431, "HeaderTooLarge", "The header is larger than the host takes.", true},
     {500, "Failed", "It went wrong for a reason that a client cannot mend.", true},
     {503, "Unavailable", "Not now: Retry-After says when to ask again.", true}}};

const SharedResponse* sharedResponse(unsigned status) {
  const auto found = std::find_if(kShared.begin(), kShared.end(),
                                  [&](const SharedResponse& shared) { return shared.status == status; });
  return found == kShared.end() ? nullptr : &*found;
}

object reference(const std::string& path) { return {{"$ref", "#/components/" + path}}; }

object textHeader(const char* description, bool isRequired) {
  return {{"description", description}, {"required", isRequired}, {"schema", object{{"type", "string"}}}};
}

object headersOf(unsigned status) {
  switch (status) {
    case 401:
      return {{"WWW-Authenticate", textHeader("Always Bearer.", true)}};
    case 405:
      return {{"Allow", textHeader("The methods of the path.", true)}};
    case 503:
      return {{"Retry-After", textHeader("Whole seconds.", true)}};
    default:
      return {};
  }
}

object problemResponse(unsigned status, const char* description) {
  object response{{"description", description},
                  {"content", object{{kProblemType, object{{"schema", reference("schemas/Problem")}}}}}};
  object headers = headersOf(status);
  if (!headers.empty()) response["headers"] = std::move(headers);
  return response;
}

/// Of all answers of a plug-in that tells its revision.
object pluginHeaders() {
  return {{"ETag", reference("headers/ETag")}, {"Mirn-Structure", reference("headers/Structure")}};
}

/// The methods of a path are its answer to OPTIONS.
object methodsResponse() {
  return {{"description", "What OPTIONS answers on every path; it takes no token."},
          {"headers", object{{"Allow", textHeader("The methods of the path.", true)}}}};
}

object notModifiedResponse() {
  return {{"description", "The answer is the one that If-None-Match names."}, {"headers", pluginHeaders()}};
}

}  // namespace

object sharedHeaders() {
  return {{"ETag", textHeader("Of the bytes sent, for If-None-Match; a change's answer has none.", false)},
          {"Structure",
           textHeader("The machine ahead of the request, for If-Match of a change: \"EPOCH.N\".", false)}};
}

object sharedResponses() {
  object responses{{"Methods", methodsResponse()}, {"NotModified", notModifiedResponse()}};
  for (const SharedResponse& shared : kShared)
    responses[shared.name] = problemResponse(shared.status, shared.description);
  return responses;
}

object problemSchema() {
  return boost::json::parse(R"({
    "type": "object",
    "description": "A failed request (RFC 9457).",
    "properties": {
      "type": {"type": "string", "description": "Always about:blank: the status says what kind of problem it is."},
      "title": {"type": "string", "description": "The status in words."},
      "status": {"type": "integer", "minimum": 400, "maximum": 599, "description": "The HTTP status."},
      "detail": {"type": "string", "description": "What went wrong, for people."},
      "errorId": {"type": "string", "description": "What went wrong, for programs; of the plug-in's refusals."}
    },
    "required": ["type", "title", "status", "detail"],
    "additionalProperties": false
  })")
      .as_object();
}

object planSchema() {
  return boost::json::parse(R"({
    "type": "object",
    "description": "What a request would have the library do, told with dryRun=true. Nothing was done.",
    "properties": {
      "operation": {"type": ["string", "null"], "description": "The library's function; null: it is not called."},
      "arguments": {"type": "array", "items": {"type": "integer", "minimum": 0}},
      "record": {"type": ["string", "null"], "description": "The bytes handed over, as hexadecimal digits."},
      "handles": {"type": "array", "items": {"type": "integer", "minimum": 0}},
      "settings": {"type": "object", "description": "Settings that would be stored."},
      "objects": {
        "type": "array",
        "description": "The objects that the request names.",
        "items": {
          "type": "object",
          "properties": {"type": {"type": "string"}, "id": {"type": "string"}},
          "required": ["type", "id"]
        }
      },
      "libraryDecides": {"type": "boolean", "description": "Always: it may refuse what all checks let pass."}
    },
    "required": ["operation", "libraryDecides"]
  })")
      .as_object();
}

Responses::Responses(bool takesRole) {
  for (const SharedResponse& shared : kShared) {
    const bool isOfRoles = shared.status == 401 || shared.status == 403;
    if (shared.isEverywhere || (isOfRoles && takesRole)) addRefusal(shared.status);
  }
}

void Responses::add(unsigned status, const std::string& description, const object& schema,
                    const std::string& mediaType) {
  object response{{"description", description}};
  if (!schema.empty()) response["content"] = object{{mediaType, object{{"schema", schema}}}};
  m_responses[status] = std::move(response);
}

void Responses::addRefusal(unsigned status) {
  const SharedResponse* const shared = sharedResponse(status);
  m_responses.emplace(status, shared == nullptr ? problemResponse(status, "It is refused.")
                                                : reference(std::string("responses/") + shared->name));
}

void Responses::addRefusal(unsigned status, const std::string& errorId, const std::string& words) {
  addRefusal(status);
  object& response = m_responses.at(status);
  const SharedResponse* const shared = sharedResponse(status);
  if (shared != nullptr && response.contains("$ref")) response = problemResponse(status, shared->description);
  object& media = response["content"].as_object()[kProblemType].as_object();
  if (!media.contains("examples")) media["examples"] = object();
  object& examples = media["examples"].as_object();
  const std::string name = errorId + '-' + std::to_string(examples.size() + 1);
  examples[name] = object{{"value", boost::json::parse(problemDocument({status, words, errorId}))}};
}

void Responses::addExample(unsigned status, const std::string& name, const boost::json::value& value) {
  const auto found = m_responses.find(status);
  if (found == m_responses.end() || !found->second.contains("content")) return;
  for (auto& media : found->second["content"].as_object())
    media.value().as_object()["examples"] = object{{name, object{{"value", value}}}};
}

void Responses::addNotModified() { m_responses.emplace(304, reference("responses/NotModified")); }

void Responses::addRehearsed(const std::string& schema) {
  const object plan = reference("schemas/" + schema);
  if (m_responses.count(kOk) == 0) {
    add(kOk, "With dryRun: what would be done.", plan);
  } else {
    auto& media = m_responses.at(kOk)["content"].as_object().begin()->value().as_object();
    media["schema"] = object{{"anyOf", boost::json::array{media["schema"], plan}}};
  }
  m_responses.at(kOk)["headers"] = pluginHeaders();
}

object Responses::toJson() const {
  object responses;
  for (const auto& [status, response] : m_responses) responses[std::to_string(status)] = response;
  return responses;
}

}  // namespace host
