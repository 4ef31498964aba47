#include "openapi/openapi_endpoints.h"

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <memory>
#include <string>
#include <utility>

#include "answers/body.h"
#include "answers/json_writer.h"
#include "openapi/document_page.h"
#include "openapi/openapi_document.h"
#include "openapi/recorded_examples.h"
#include "plugin_extensions.h"
#include "text.h"

namespace host {

namespace {

using boost::json::object;

constexpr char kJson[] = "application/json";
constexpr char kHtml[] = "text/html; charset=utf-8";

std::string versionText(const PluginVersion& version) {
  return std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
         std::to_string(version.patch) + '.' + std::to_string(version.build);
}

object descriptionOf(ovra::service_plugin_interface& plugin) {
  auto* const described = dynamic_cast<ovra::described_plugin_1*>(&plugin);
  if (described == nullptr) return {};
  return boost::json::parse(writeJson(described->describe())).as_object();
}

DocumentedService serviceOf(ovra::service_plugin_interface& plugin) {
  DocumentedService service{wideToUtf8(plugin.getName()), versionText(plugin.getVersion()),
                            descriptionOf(plugin)};
  service.examples = boost::json::parse(recordedExamples()).as_object();
  return service;
}

/// Bytes that are there when the table is complete.
ApiEndpoint constantEndpoint(const char* operation, const wchar_t* path, const char* type,
                             std::shared_ptr<const Body> bytes) {
  ApiEndpoint endpoint;
  endpoint.operation = operation;
  endpoint.method = "GET";
  endpoint.path = path;
  endpoint.handle = [type, bytes = std::move(bytes)](const Call&, const std::string&) {
    return Answer{200, type, *bytes, {}};
  };
  return endpoint;
}

ApiEndpoint documentEndpoint(std::shared_ptr<const Body> bytes) {
  ApiEndpoint endpoint = constantEndpoint("getOpenApi", L"openapi.json", kJson, std::move(bytes));
  endpoint.document = EndpointDocument{
      "host",
      "document",
      "Tells all operations as an OpenAPI document.",
      "It stays the same for as long as the host runs.",
      {{200, "An OpenAPI 3.1 document.", R"({"type": "object", "required": ["openapi", "info", "paths"]})"}}};
  return endpoint;
}

ApiEndpoint pageEndpoint(std::shared_ptr<const Body> bytes) {
  ApiEndpoint endpoint = constantEndpoint("getDocumentation", L"docs", kHtml, std::move(bytes));
  endpoint.document = EndpointDocument{"host",
                                       "page",
                                       "Tells all operations on a page for people.",
                                       "The page needs nothing else, from here or elsewhere.",
                                       {{200, "A page.", R"({"type": "string"})", "text/html"}}};
  return endpoint;
}

}  // namespace

void addOpenApiEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin) {
  const auto json = std::make_shared<Body>();
  const auto page = std::make_shared<Body>();
  table.add(documentEndpoint(json));
  table.add(pageEndpoint(page));
  const object document = openApiDocument(table, serviceOf(plugin));
  *json = boost::json::serialize(document);
  *page = documentPage(document);
}

}  // namespace host
