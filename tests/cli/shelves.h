#ifndef MIRN_TESTS_CLI_SHELVES_H
#define MIRN_TESTS_CLI_SHELVES_H

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "commands/command_line.h"
#include "fake_service.h"
#include "lent_service.h"

/// A service of shelves and boxes: what storage is to the program, too.
inline constexpr char kDocument[] = R"({
  "openapi": "3.1.0", "info": {"title": "Shelves", "version": "1"},
  "paths": {
    "/api/v1/boxes": {
      "get": {"operationId": "listBoxes", "summary": "Lists all boxes.",
        "parameters": [{"name": "colour", "in": "query", "schema": {"type": "string", "enum": ["RED", "DARK_BLUE"]}}],
        "responses": {"200": {"content": {"application/json": {"schema": {"anyOf": [
          {"type": "array", "items": {"$ref": "#/components/schemas/Box"}}, {"type": "object"}]}}}}},
        "x-mirn": {"noun": "boxs", "verb": "list", "effect": "read", "role": "observe", "columns": ["id", "name"]}}},
    "/api/v1/boxes/{boxId}": {
      "delete": {"operationId": "burnBox", "summary": "Burns a box.",
        "parameters": [{"name": "boxId", "in": "path", "required": true, "schema": {"type": "string", "x-mirn": {"refersTo": "box"}}},
          {"name": "dryRun", "in": "query", "schema": {"type": "boolean"}}],
        "responses": {"204": {"description": "Done."}},
        "x-mirn": {"noun": "boxs", "verb": "burn", "effect": "destroys", "role": "administer"}}},
    "/api/v1/boxes/{boxId}/fill": {
      "put": {"operationId": "fillBox", "summary": "Fills a box.",
        "parameters": [{"name": "boxId", "in": "path", "required": true, "schema": {"type": "string", "x-mirn": {"refersTo": "box"}}},
          {"name": "dryRun", "in": "query", "schema": {"type": "boolean"}}],
        "requestBody": {"content": {"application/json": {"schema": {"type": "object", "required": ["amount"], "properties": {
          "amount": {"type": "string", "x-mirn": {"unit": "MiB"}},
          "with": {"type": "array", "items": {"type": "string"}, "x-mirn": {"refersTo": "box"}}}}}}},
        "responses": {"200": {"content": {"application/json": {"schema": {"$ref": "#/components/schemas/Box"}}}}},
        "x-mirn": {"noun": "boxs", "verb": "fill", "effect": "changes", "role": "operate"}}},
    "/api/v1/tidy": {
      "post": {"operationId": "tidy", "summary": "Puts all in order.", "responses": {"204": {"description": "Done."}},
        "x-mirn": {"noun": "", "verb": "tidy", "effect": "harmless", "role": "operate"}}},
    "/api/v1/crate": {
      "get": {"operationId": "packCrate", "summary": "Packs all into a crate.",
        "responses": {"200": {"content": {"application/gzip": {"schema": {"type": "string"}}}}},
        "x-mirn": {"noun": "", "verb": "crate", "effect": "read", "role": "administer"}}}
  },
  "components": {"schemas": {"Box": {"type": "object", "properties": {
    "id": {"type": "string"}, "name": {"type": "string"}, "room": {"type": "string", "x-mirn": {"unit": "bytes"}}}}}}
})";

inline constexpr char kBoxes[] =
    R"([{"id":"111","name":"Hats","room":"2048"},{"id":"112","name":"Shoes","room":"0"},
  {"id":"2","name":"Shoes","room":"0"}])";

inline constexpr char kBurnPlan[] =
    R"({"structure":"\"e.7\"","effects":[{"fate":"goes","text":"The box goes.","objects":[]}],
  "lost":[{"object":{"type":"box","id":"111","name":"Hats"},"text":"everything in Hats"}],"work":[],"redundancy":[],
  "warnings":["It smells."]})";
inline constexpr char kFillPlan[] =
    R"({"structure":"\"e.7\"","effects":[{"fate":"changes","text":"The box is filled.","objects":[]}],
  "lost":[],"work":[],"redundancy":[],"warnings":[]})";

struct Outcome {
  mirnctl::ExitStatus status = mirnctl::ExitStatus::kDone;
  std::string out, err;
};

/// Command lines of that service.
class CommandLine : public testing::Test {
 protected:
  CommandLine() {
    m_service.answer("GET /api/v1/boxes", kBoxes);
    m_service.answer("DELETE /api/v1/boxes/111?dryRun=true", kBurnPlan);
    m_service.answer("DELETE /api/v1/boxes/111", "", 204);
    m_service.answer("PUT /api/v1/boxes/111/fill?dryRun=true", kFillPlan);
    m_service.answer("PUT /api/v1/boxes/111/fill", R"({"id":"111","name":"Hats","room":"4096"})");
    m_service.answer("POST /api/v1/tidy", "", 204);
    m_service.answer("GET /api/v1/crate", "\x1f\x8b crate");
  }

  Outcome run(const std::vector<std::string>& arguments) {
    std::istringstream in(m_typed);
    std::ostringstream out, err;
    mirnctl::Terminal terminal{in, out, err, m_screen, m_asksPeople, m_asksPeople};
    const auto borrow = [this](const mirnctl::Destination& destination, std::chrono::seconds) {
      m_destination = destination;
      return std::make_unique<LentService>(m_service);
    };
    const mirnctl::ExitStatus status = runCommand(arguments, m_document, m_surroundings, borrow, terminal);
    return {status, out.str(), err.str()};
  }

  const mirnctl::Request& last() const { return m_service.asked.back(); }

  const mirnctl::ApiDocument m_document{kDocument};
  FakeService m_service;
  mirnctl::Surroundings m_surroundings;
  mirnctl::Destination m_destination;
  std::string m_typed;
  mirnctl::Screen m_screen;  ///< None unless a test has one.
  bool m_asksPeople = false;
};

#endif
