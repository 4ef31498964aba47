#include "openapi/document_page.h"

#include <gmock/gmock.h>

#include <boost/json/parse.hpp>
#include <string>

namespace host {

namespace {

using testing::HasSubstr;
using testing::Not;

std::string pageOf(const std::string& document) {
  return documentPage(boost::json::parse(document).as_object());
}

constexpr char kDocument[] = R"({
  "info": {"title": "A <b>", "version": "1", "description": "About & \"more\"."},
  "paths": {"/a/{id}": {"put": {
    "operationId": "setA", "summary": "Sets.", "description": "Really.",
    "x-mirn": {"noun": "a", "verb": "set", "effect": "changes", "role": "operate"},
    "parameters": [{"name": "id", "in": "path", "required": true, "description": "The id.",
                    "schema": {"type": "string"}}],
    "requestBody": {"content": {"application/json": {
      "schema": {"type": "object", "required": ["to"], "properties": {
        "to": {"type": "string", "description": "Where.", "enum": ["HERE", "THERE"]}}},
      "examples": {"recorded": {"value": {"to": "<HERE>"}}}}}},
    "responses": {
      "200": {"description": "Done.", "content": {"application/json": {
        "schema": {"$ref": "#/components/schemas/A"}}}},
      "400": {"$ref": "#/components/responses/BadRequest"}}
  }}},
  "components": {
    "responses": {"BadRequest": {"description": "No."}},
    "schemas": {"A": {"properties": {"part": {"type": "object", "properties": {
      "size": {"type": "string", "x-mirn": {"unit": "bytes"}}}}}}}}
})";

TEST(DocumentPage, MakesNoMarkupOfTexts) {
  const std::string page = pageOf(kDocument);
  EXPECT_THAT(page, HasSubstr("A &lt;b&gt; 1"));
  EXPECT_THAT(page, HasSubstr("About &amp; &quot;more&quot;."));
  EXPECT_THAT(page, HasSubstr("{&quot;to&quot;:&quot;&lt;HERE&gt;&quot;}"));
}

TEST(DocumentPage, NeedsNothingElse) {
  const std::string page = pageOf(kDocument);
  for (const char* const needing : {"<script", "<style", "<link", "<img", "src=", "http:", "https:", "//"})
    EXPECT_THAT(page, Not(HasSubstr(needing)));
}

TEST(DocumentPage, ShowsAnOperationWithAllThatIsToldOfIt) {
  const std::string page = pageOf(kDocument);
  for (const char* const shown :
       {"<h3 id=\"setA\">PUT /a/{id}</h3>", "Sets. Really.", "a set; effect: changes; role: operate.",
        "<code>id</code>", "path, required", "<code>to</code>", "<code>THERE</code>",
        "200 Done. <a href=\"#schema-A\">A</a>", "<a href=\"#answer-BadRequest\">BadRequest</a>"})
    EXPECT_THAT(page, HasSubstr(shown));
}

TEST(DocumentPage, LeadsOnlyWhereSomethingIs) {
  const std::string page = pageOf(kDocument);
  for (const char* const place : {"setA", "schema-A", "answer-BadRequest"}) {
    EXPECT_THAT(page, HasSubstr("href=\"#" + std::string(place) + '"'));
    EXPECT_THAT(page, HasSubstr("id=\"" + std::string(place) + '"'));
  }
}

TEST(DocumentPage, ShowsThePartsOfAnObject) {
  EXPECT_THAT(pageOf(kDocument), HasSubstr("<code>part.size</code>"));
  EXPECT_THAT(pageOf(kDocument), HasSubstr("string, bytes"));
}

TEST(DocumentPage, IsOneEvenOfNothing) { EXPECT_THAT(pageOf("{}"), HasSubstr("</html>")); }

}  // namespace

}  // namespace host
