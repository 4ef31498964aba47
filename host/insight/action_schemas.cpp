#include "insight/action_schemas.h"

#include "insight/schema_parts.h"

namespace host {

namespace {

std::string needSchema() {
  return recordSchema(R"(
    "name": {"type": "string"},
    "type": {"type": "string", "enum": ["text", "number", "boolean", "list"]},
    "help": {"type": "string"})");
}

std::string actionSchema() {
  return recordSchema(R"(
    "operation": {"type": "string", "description": "Its id."},
    "effect": {"type": "string", "enum": ["harmless", "changes", "destroys"]},
    "role": {"type": "string", "enum": ["observe", "operate", "administer"]},
    "argument": {"type": ["string", "null"], "description": "The one that the word stands in."},
    "word": {"type": ["string", "null"]},
    "verdict": {"type": "string", "enum": ["allowed", "refused", "needs"]},
    "errorId": {"type": ["string", "null"]},
    "words": {"type": ["string", "null"], "description": "Why it is refused."},
    "needs": )" + listSchema(needSchema(), "What is to be told, too."));
}

std::string candidateSchema() {
  return recordSchema(R"(
    "value": {"type": "string"},
    "object": {"oneOf": [{"type": "null"}, )" +
                      objectSchema() + R"(]},
    "allowed": {"type": "boolean"},
    "errorId": {"type": ["string", "null"]},
    "words": {"type": ["string", "null"], "description": "Why it is refused."})");
}

const char* const kBounds = R"({
  "type": ["object", "null"],
  "description": "Of a size.",
  "properties": {
    "least": {"type": "string"},
    "most": {"type": "string"},
    "unit": {"type": "string", "const": "MiB"}
  },
  "required": ["least", "most", "unit"],
  "additionalProperties": false
})";

const char* const kLibraryDecides =
    R"({"type": "boolean", "const": true, "description": "It may still refuse."})";

}  // namespace

std::string actionsSchema() {
  return recordSchema(R"(
    "object": )" + objectSchema() +
                      R"(,
    "actions": )" +
                      tableSchema(actionSchema(), "In the order of the operations.",
                                  {"verdict", "operation", "word", "words"}) +
                      R"(,
    "libraryDecides": )" +
                      kLibraryDecides);
}

std::string candidatesSchema() {
  return recordSchema(R"(
    "items": )" + listSchema(candidateSchema(), "In the order of the machine.") +
                      R"(,
    "next": )" + nextSchema() +
                      R"(,
    "size": )" + kBounds +
                      R"(,
    "libraryDecides": )" +
                      kLibraryDecides);
}

}  // namespace host
