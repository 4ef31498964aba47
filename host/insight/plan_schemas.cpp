#include "insight/plan_schemas.h"

#include <vector>

#include "insight/schema_parts.h"

namespace host {

namespace {

/// Settings are changed by requests, and are no objects of the machine.
std::string plannedTypeSchema() {
  std::vector<std::string> types = kObjectTypes;
  types.emplace_back("setting");
  return wordSchema(types);
}

std::string plannedObjectSchema() {
  return R"({
  "type": "object",
  "properties": {
    "type": )" +
         plannedTypeSchema() + R"(,
    "id": {"type": ["string", "null"], "description": "Null for what comes, and for settings."},
    "name": {"type": "string", "description": "Of what comes where it is given one."},
    "level": {"type": "string", "description": "Where it is another than before."},
    "members": )" +
         listSchema(objectSchema(), "All of them, where they are others than before.") + R"(,
    "aboutTotalBytes": {
      "type": "string",
      "description": "Where it is another than before, when the work is over; the library rounds."
    }
  },
  "required": ["type", "id"],
  "additionalProperties": false
})";
}

std::string effectSchema() {
  return recordSchema(R"(
    "fate": {"type": "string", "enum": ["comes", "changes", "goes", "overwritten"]},
    "text": {"type": "string", "description": "One sentence."},
    "objects": )" + listSchema(plannedObjectSchema(), "Which it meets."));
}

std::string lossSchema() {
  return recordSchema(R"("object": )" + objectSchema() + R"(, "text": {"type": "string"})");
}

std::string workSchema() {
  return recordSchema(R"(
    "kind": {"type": "string", "enum": ["rebuild", "initialize", "verify", "migrate"]},
    "object": )" + objectSchema() +
                      R"(,
    "likelySeconds": {
      "type": ["integer", "string"],
      "description": "As long as such work took: on this volume, or else on any; unknown before one has ended."
    },
    "jobs": {"type": "integer", "minimum": 0, "description": "Of so many that ended."})");
}

std::string redundancySchema() {
  return recordSchema(R"(
    "object": )" + objectSchema() +
                      R"(,
    "mayFailNow": {
      "type": ["integer", "null"],
      "description": "So many of its disks, whichever they are; null for what comes."
    },
    "mayFailMeanwhile": {"type": "integer", "minimum": 0, "description": "Until the work is over."})");
}

std::string wholeSchema() {
  return R"({
  "type": "object",
  "properties": {
    "structure": {
      "type": "string",
      "description": "The machine that it holds for, to be sent as If-Match with the change, as it is."
    },
    "effects": )" +
         listSchema(effectSchema(), "What comes, changes, goes or is overwritten.") + R"(,
    "lost": )" +
         listSchema(lossSchema(), "What cannot be had again.") + R"(,
    "work": )" +
         listSchema(workSchema(), "What goes on in the machine after the answer.") + R"(,
    "redundancy": )" +
         listSchema(redundancySchema(), "What volumes may lose until then.") + R"(,
    "warnings": )" +
         listSchema(R"({"type": "string"})", "A sentence each.") + R"(
  },
  "required": ["structure", "effects", "lost", "work", "redundancy", "warnings"]
})";
}

}  // namespace

const std::string& planSchema() {
  static const std::string kSchema = wholeSchema();
  return kSchema;
}

}  // namespace host
