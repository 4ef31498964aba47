#include "insight/health_schemas.h"

#include "insight/schema_parts.h"

namespace host {

namespace {

std::string volumeHealthSchema() {
  return recordSchema(R"(
    "id": {"type": "string"},
    "name": {"type": "string"},
    "mayFail": {"type": "integer", "minimum": 0, "description": "So many of its disks, whichever they are."},
    "exact": {"type": "boolean", "description": "Some set of one more ends it."},
    "reason": {"type": ["string", "null"], "description": "Why it is not exact."})");
}

std::string causeSchema() {
  return recordSchema(causeMembers(R"({"type": "string", "description": "When it came, or unknown."})"));
}

}  // namespace

std::string stepSchema() {
  return recordSchema(R"(
    "operation": {"type": "string", "description": "Its id."},
    "arguments": {
      "type": "object",
      "description": "What is known of them, by name.",
      "additionalProperties": {"type": "string"}
    })");
}

std::string causeMembers(const std::string& sinceSchema) {
  return R"(
    "id": {"type": "string", "description": "The same for as long as it lasts, and when it comes back."},
    "kind": {"type": "string"},
    "severity": )" +
         severitySchema() + R"(,
    "object": )" +
         objectSchema() + R"(,
    "path": )" +
         listSchema(objectSchema(), "From the controller down to the object.") + R"(,
    "since": )" +
         sinceSchema + R"(,
    "text": {"type": "string", "description": "What is wrong, for people."},
    "atRisk": )" +
         listSchema(objectSchema(), "The volumes that may be lost by it, or are.") + R"(,
    "steps": )" +
         listSchema(stepSchema(), "What may help.");
}

std::string healthSchema() {
  return recordSchema(R"(
    "severity": )" + severitySchema() +
                      R"(,
    "position": )" + positionSchema() +
                      R"(,
    "takenAt": )" + maybeMomentSchema("When the picture was taken; null before the first one.") +
                      R"(,
    "causes": )" +
                      tableSchema(causeSchema(), "What is wrong, the worst first.",
                                  {"severity", "kind", "object", "since", "text"}) +
                      R"(,
    "volumes": )" +
                      tableSchema(volumeHealthSchema(), "What each may still lose.",
                                  {"name", "mayFail", "exact", "reason"}));
}

}  // namespace host
