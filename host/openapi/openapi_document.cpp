#include "openapi/openapi_document.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <map>
#include <utility>

#include "answers/problem.h"
#include "openapi/field_schemas.h"
#include "openapi/json_access.h"
#include "openapi/operations.h"
#include "openapi/responses.h"
#include "text.h"

namespace host {

namespace {

using boost::json::array;
using boost::json::object;

constexpr char kAbout[] =
    "Every path under /api takes a token, in the Authorization field or as the parameter access_token, "
    "and the role that x-mirn tells of its operation; so does /metrics, in the field alone. A failed "
    "request is answered with a problem document. HEAD answers as GET does, without a body; OPTIONS lists"
    " the methods of a path in Allow and takes no token. A path that is none is answered with 404, a "
    "method that a path does not take with 405, a method that is none with 501, and another version of "
    "HTTP with 505.";

object infoOf(const DocumentedService& service) {
  return {{"title", service.name},
          {"version", service.version},
          {"description", kAbout},
          {"license", object{{"name", "Apache License 2.0"}, {"identifier", "Apache-2.0"}}}};
}

object securitySchemes() {
  return {{"token",
           object{{"type", "http"},
                  {"scheme", "bearer"},
                  {"description", "A token of the host: `mirn-host token add`, or what a sign-in gives."}}},
          {"tokenParameter",
           object{{"type", "apiKey"},
                  {"in", "query"},
                  {"name", "access_token"},
                  {"description", "The same in the URL, unless the host runs with --no-token-in-url."}}}};
}

/// What all plans of changes have beyond a rehearsal; null where there are none.
const std::string* planSchemaIn(const EndpointTable& table) {
  for (const EndpointTable::Resource& resource : table.resources()) {
    for (const auto& [method, endpoint] : resource.endpoints) {
      if (endpoint.planSchema != nullptr) return endpoint.planSchema;
    }
  }
  return nullptr;
}

object schemasOf(const EndpointTable& table, const object& description) {
  object schemas{{"Problem", problemSchema()}, {"Plan", planSchema()}};
  if (const std::string* const further = planSchemaIn(table)) {
    schemas["ChangePlan"] =
        object{{"allOf", array{object{{"$ref", "#/components/schemas/Plan"}}, boost::json::parse(*further)}}};
  }
  for (const auto& member : objectIn(description, "schemas"))
    schemas[member.key()] = answerSchema(member.value().as_object());
  return schemas;
}

/// What the library's statuses become, for all operations that ask it.
array libraryRefusals(const object& description) {
  array refusals;
  for (const auto& element : listIn(description, "statuses")) {
    object refusal = element.as_object();
    const auto kind = refusalKindOf(utf8ToWide(textIn(refusal, "kind")));
    if (kind) refusal["httpStatus"] = statusOf(*kind);
    refusals.push_back(std::move(refusal));
  }
  return refusals;
}

std::string pathOf(const ApiEndpoint& endpoint) {
  return '/' + boost::algorithm::replace_all_copy(wideToUtf8(endpoint.path), "{*}",
                                                  std::string("{") + kRestParameter + '}');
}

class Operations {
 public:
  explicit Operations(const DocumentedService& service) : m_service(service) {
    for (const auto& route : listIn(service.description, "routes"))
      m_routes[textIn(route.as_object(), "id")] = &route.as_object();
  }

  object of(const ApiEndpoint& endpoint) const {
    const object& example = objectIn(m_service.examples, endpoint.operation);
    if (endpoint.document) return ownOperation(endpoint, example);
    const auto route = m_routes.find(endpoint.operation);
    return route == m_routes.end()
               ? undescribedOperation(endpoint)
               : describedOperation(endpoint, *route->second, m_service.description, example);
  }

 private:
  const DocumentedService& m_service;
  std::map<std::string, const object*> m_routes;
};

object pathsOf(const EndpointTable& table, const DocumentedService& service) {
  const Operations operations(service);
  object paths;
  for (const EndpointTable::Resource& resource : table.resources()) {
    object item;
    for (const auto& [method, endpoint] : resource.endpoints)
      item[boost::algorithm::to_lower_copy(method)] = operations.of(endpoint);
    paths[pathOf(resource.endpoints.begin()->second)] = std::move(item);
  }
  return paths;
}

}  // namespace

object openApiDocument(const EndpointTable& table, const DocumentedService& service) {
  object document{{"openapi", "3.1.0"},
                  {"info", infoOf(service)},
                  {"servers", array{object{{"url", "/"}}}},
                  {"paths", pathsOf(table, service)},
                  {"components", object{{"securitySchemes", securitySchemes()},
                                        {"headers", sharedHeaders()},
                                        {"parameters", sharedParameters()},
                                        {"responses", sharedResponses()},
                                        {"schemas", schemasOf(table, service.description)}}}};
  array refusals = libraryRefusals(service.description);
  if (!refusals.empty()) document["x-mirn-library-refusals"] = std::move(refusals);
  return document;
}

}  // namespace host
