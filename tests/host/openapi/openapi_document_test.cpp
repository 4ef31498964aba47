#include "openapi/openapi_document.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>
#include <string>

namespace host {

namespace {

using boost::json::object;
using boost::json::parse;
using boost::json::value;

constexpr char kDescription[] = R"({
  "routes": [{
    "id": "rebuildVolume", "noun": "volumes", "verb": "rebuild", "method": "PUT",
    "key": "mirn/volumes", "path": "mirn/volumes/{volumeId}/rebuild",
    "summary": "Rebuilds.", "description": "Onto a disk.", "effect": "destroys", "role": "operate",
    "arguments": [{"name": "volumeId", "refersTo": "volume"}],
    "query": [{"name": "time", "type": "text", "least": 1, "most": 9, "required": false, "help": "Hours."}],
    "body": [
      {"name": "source", "type": "text", "required": true, "help": "Of what.", "words": ["DISK", "ARRAY"]},
      {"name": "diskId", "type": "text", "required": true, "help": "The disk.", "refersTo": "disk",
       "when": {"field": "source", "word": "DISK"}}],
    "answer": {"schema": "Volume", "list": true, "columns": ["id"]},
    "refusals": [{"errorId": "INVALID_PARAMETER", "words": "In use", "kind": "state"}],
    "operations": ["VexVolumeRebuild"],
    "work": [{"kind": "rebuild", "on": "volumeId"}]
  }],
  "refusals": [{"errorId": "OFFLINE", "words": "Stopped", "kind": "offline"}],
  "statuses": [{"status": 9, "errorId": "X", "words": "Cannot", "kind": "unsupported"}],
  "schemas": {"Volume": {"type": "object", "required": ["id"], "properties": {
    "id": {"type": "string", "refersTo": "volume"},
    "parts": {"type": "array", "items": {"type": "object", "properties": {
      "size": {"type": "string", "unit": "bytes"}}}}}}}
})";

ApiEndpoint endpointOf(const std::string& operation, const std::string& method, const std::wstring& path,
                       std::optional<Role> role) {
  ApiEndpoint endpoint;
  endpoint.operation = operation;
  endpoint.method = method;
  endpoint.path = path;
  endpoint.role = role;
  return endpoint;
}

ApiEndpoint ownEndpoint() {
  ApiEndpoint endpoint = endpointOf("getHealth", "GET", L"healthz", {});
  endpoint.document = EndpointDocument{
      "host", "health", "Tells.", "More.", {{200, "It is.", R"({"type": "object"})"}, {409, {}}}};
  return endpoint;
}

class OpenApiDocument : public testing::Test {
 protected:
  OpenApiDocument() {
    EndpointTable table;
    table.add(ownEndpoint());
    ApiEndpoint change =
        endpointOf("rebuildVolume", "PUT", L"api/v1/mirn/volumes/{volumeId}/rebuild", Role::kOperate);
    change.isChange = change.takesDryRun = true;
    table.add(change);
    ApiEndpoint read = endpointOf("GET other", "GET", L"api/v1/other/{*}", Role::kObserve);
    read.takesDryRun = true;
    table.add(read);
    DocumentedService service{"Plug-in", "1.2.3.4", parse(kDescription).as_object(), {}};
    service.examples =
        parse(R"({"rebuildVolume": {"body": {"source": "ARRAY"}, "status": 200, "answer": []}})").as_object();
    m_document = openApiDocument(table, service);
  }

  const value& at(const std::string& pointer) const { return m_document.at_pointer(pointer); }
  const value& route(const std::string& pointer) const {
    return at("/paths/~1api~1v1~1mirn~1volumes~1{volumeId}~1rebuild/put" + pointer);
  }
  const value& own(const std::string& pointer) const { return at("/paths/~1healthz/get" + pointer); }

  value m_document;
};

TEST_F(OpenApiDocument, IsOfItsVersionAndService) {
  EXPECT_EQ(at("/openapi").as_string(), "3.1.0");
  EXPECT_EQ(at("/info/title").as_string(), "Plug-in");
  EXPECT_EQ(at("/info/version").as_string(), "1.2.3.4");
}

TEST_F(OpenApiDocument, NamesOperationsByTheirIds) {
  EXPECT_EQ(route("/operationId").as_string(), "rebuildVolume");
  EXPECT_EQ(own("/operationId").as_string(), "getHealth");
}

TEST_F(OpenApiDocument, TellsWhatACommandLineNeeds) {
  EXPECT_EQ(route("/x-mirn"), parse(R"({"noun": "volumes", "verb": "rebuild", "effect": "destroys",
    "role": "operate", "columns": ["id"], "work": [{"kind": "rebuild", "on": "volumeId"}]})"));
  EXPECT_EQ(own("/x-mirn"), parse(R"({"noun": "host", "verb": "health", "effect": "read", "role": "none"})"));
}

TEST_F(OpenApiDocument, AsksForATokenWhereARoleIsNeeded) {
  EXPECT_EQ(route("/security"), parse(R"([{"token": []}, {"tokenParameter": []}])"));
  EXPECT_EQ(route("/responses/401/$ref").as_string(), "#/components/responses/Unauthorized");
  EXPECT_TRUE(own("/security").as_array().empty());
  EXPECT_FALSE(own("/responses").as_object().contains("401"));
}

TEST_F(OpenApiDocument, TellsParametersOfPathAndQuery) {
  EXPECT_EQ(route("/parameters/0/in").as_string(), "path");
  EXPECT_EQ(route("/parameters/0/schema"), parse(R"({"type": "string", "x-mirn": {"refersTo": "volume"}})"));
  EXPECT_EQ(route("/parameters/1/in").as_string(), "query");
  EXPECT_EQ(route("/parameters/1/schema"), parse(R"({"type": "integer", "minimum": 1, "maximum": 9})"));
}

TEST_F(OpenApiDocument, TakesFieldsOfABodyUnderTheirConditionAlone) {
  const std::string schema = "/requestBody/content/application~1json/schema";
  EXPECT_EQ(route(schema + "/required"), parse(R"(["source"])"));
  EXPECT_EQ(route(schema + "/additionalProperties"), value(false));
  EXPECT_EQ(route(schema + "/allOf"), parse(R"([{
    "if": {"required": ["source"], "properties": {"source": {"const": "DISK"}}},
    "then": {"required": ["diskId"]},
    "else": {"properties": {"diskId": false}}}])"));
}

TEST_F(OpenApiDocument, ShowsRefusalsUnderTheStatusOfTheirKind) {
  const std::string problems = "/content/application~1problem+json/examples/";
  EXPECT_EQ(route("/responses/409" + problems + "INVALID_PARAMETER-1/value/detail").as_string(), "In use");
  EXPECT_EQ(route("/responses/503" + problems + "OFFLINE-1/value/errorId").as_string(), "OFFLINE");
}

TEST_F(OpenApiDocument, TellsTheLibrarysStatusesOnceAndByThemWhatMayCome) {
  EXPECT_EQ(route("/responses/422/$ref").as_string(), "#/components/responses/Unprocessable");
  EXPECT_EQ(at("/x-mirn-library-refusals/0/httpStatus"), value(422));
}

TEST_F(OpenApiDocument, RefersToTheSchemaOfAnAnswer) {
  EXPECT_EQ(route("/responses/200/content/application~1json/schema/anyOf/0"),
            parse(R"({"type": "array", "items": {"$ref": "#/components/schemas/Volume"}})"));
}

TEST_F(OpenApiDocument, KeepsKeywordsThatOpenApiDoesNotKnowUnderOneOfItsOwn) {
  EXPECT_EQ(at("/components/schemas/Volume/properties/id"),
            parse(R"({"type": "string", "x-mirn": {"refersTo": "volume"}})"));
  EXPECT_EQ(at("/components/schemas/Volume/properties/parts/items/properties/size"),
            parse(R"({"type": "string", "x-mirn": {"unit": "bytes"}})"));
}

TEST_F(OpenApiDocument, TellsOfRehearsalsAndConditionsOfThePluginsOperations) {
  EXPECT_EQ(route("/responses/200/content/application~1json/schema/anyOf/1/$ref").as_string(),
            "#/components/schemas/Plan");
  EXPECT_EQ(route("/parameters/2/$ref").as_string(), "#/components/parameters/DryRun");
  EXPECT_EQ(route("/parameters/3/$ref").as_string(), "#/components/parameters/IfMatch");
  EXPECT_EQ(route("/responses/412/$ref").as_string(), "#/components/responses/PreconditionFailed");
  EXPECT_FALSE(route("/responses").as_object().contains("304"));
  const value& read = at("/paths/~1api~1v1~1other~1{rest}/get");
  EXPECT_EQ(read.at_pointer("/responses/304/$ref").as_string(), "#/components/responses/NotModified");
  EXPECT_EQ(read.at_pointer("/parameters").as_array().size(), 5u);
  EXPECT_FALSE(own("/responses").as_object().contains("412"));
  EXPECT_FALSE(at("/components/schemas").as_object().contains("ChangePlan"));
}

TEST(OpenApiDocumentOfPlannedChanges, HasTheirSchemaBesideThatOfRehearsals) {
  const std::string schema = R"({"type": "object", "required": ["lost"]})";
  EndpointTable table;
  ApiEndpoint change =
      endpointOf("rebuildVolume", "PUT", L"api/v1/mirn/volumes/{volumeId}/rebuild", Role::kOperate);
  change.isChange = change.takesDryRun = true;
  change.planSchema = &schema;
  table.add(change);
  const value document = openApiDocument(table, {"Plug-in", "1.2.3.4", parse(kDescription).as_object(), {}});
  EXPECT_EQ(
      document.at_pointer("/paths/~1api~1v1~1mirn~1volumes~1{volumeId}~1rebuild/put/responses/200/content/"
                          "application~1json/schema/anyOf/1/$ref"),
      "#/components/schemas/ChangePlan");
  EXPECT_EQ(document.at_pointer("/components/schemas/ChangePlan/allOf/0/$ref"), "#/components/schemas/Plan");
  EXPECT_EQ(document.at_pointer("/components/schemas/ChangePlan/allOf/1"), parse(schema));
}

TEST_F(OpenApiDocument, ShowsWhatWasRecorded) {
  EXPECT_EQ(route("/requestBody/content/application~1json/examples/recorded/value"),
            parse(R"({"source": "ARRAY"})"));
  EXPECT_EQ(route("/responses/200/content/application~1json/examples/recorded/value"), parse("[]"));
}

TEST_F(OpenApiDocument, TellsThePathsAtLeastOfAPluginThatDoesNotDescribeItself) {
  const value& other = at("/paths/~1api~1v1~1other~1{rest}/get");
  EXPECT_EQ(other.at("operationId").as_string(), "GET_other");
  EXPECT_EQ(other.at_pointer("/parameters/0/name").as_string(), "rest");
  EXPECT_EQ(other.at_pointer("/x-mirn/effect").as_string(), "read");
}

TEST(OpenApiDocumentOfNothing, IsOneStill) {
  const object document = openApiDocument(EndpointTable(), {"Plug-in", "1", {}, {}});
  EXPECT_TRUE(document.at("paths").as_object().empty());
  EXPECT_FALSE(document.contains("x-mirn-library-refusals"));
}

}  // namespace

}  // namespace host
