#include "insight/readiness_schemas.h"

#include "insight/health_schemas.h"
#include "insight/schema_parts.h"

namespace host {

namespace {

std::string checkSchema() {
  return recordSchema(R"(
    "kind": {"type": "string", "description": "That of its items."},
    "state": {
      "type": "string",
      "enum": ["ok", "found", "unknown"],
      "description": "Whether it has items; unknown where not all of it is known."
    },
    "reason": {"type": ["string", "null"], "description": "Why not all of it is known."})");
}

std::string monthSchema() {
  return recordSchema(R"(
    "month": {"type": "string", "pattern": "^[0-9]{4}-[0-9]{2}$", "description": "Of the calendar in UTC."},
    "exposedSeconds": {
      "type": ["integer", "string"],
      "x-mirn": {"unit": "s"},
      "description": "In which some volume lacked its redundancy; unknown where no history tells."
    })");
}

/// By kind of item; each has some of them.
std::string detailsSchema() {
  return R"({
  "type": "object",
  "description": "What the sentence stands on, by kind.",
  "properties": {
    "array": )" +
         objectSchema() + R"(,
    "volumes": )" +
         listSchema(objectSchema(), "With redundancy, on the array.") + R"(,
    "verifiedAt": {
      "type": ["string", "null"],
      "description": "When it was verified last; null where it was never seen, unknown where nobody watched for so long."
    },
    "model": {"type": "string"},
    "firmware": {
      "type": "array",
      "items": {
        "type": "object",
        "properties": {"version": {"type": "string"}, "disks": {"type": "integer", "minimum": 1}},
        "required": ["version", "disks"],
        "additionalProperties": false
      }
    },
    "exposedSeconds": {"type": "integer", "minimum": 0, "description": "In all of these months."},
    "rebuilds": {"type": "integer", "minimum": 4},
    "earlierSeconds": {"type": "integer", "minimum": 0, "description": "Median of all but the last two."},
    "lastSeconds": {"type": "integer", "minimum": 0, "description": "The lesser of the last two."},
    "ratio": {"type": "number", "description": "Of the last to the earlier ones."}
  },
  "additionalProperties": false
})";
}

std::string itemSchema() {
  return recordSchema(R"(
    "kind": {"type": "string"},
    "severity": )" + severitySchema() +
                      R"(,
    "objects": )" + listSchema(objectSchema(), "Those that it is about.") +
                      R"(,
    "text": {"type": "string", "description": "What is not as it should be, for people."},
    "details": )" + detailsSchema() +
                      R"(,
    "steps": )" + listSchema(stepSchema(), "What may help."));
}

}  // namespace

std::string readinessSchema() {
  return recordSchema(R"(
    "severity": )" + severitySchema() +
                      R"(,
    "position": )" + positionSchema() +
                      R"(,
    "takenAt": )" + maybeMomentSchema("When the picture was taken; null before the first one.") +
                      R"(,
    "historyFrom": )" +
                      maybeMomentSchema("When the history begins; null where there is none to be read.") +
                      R"(,
    "verifiedWithinDays": {"type": "integer", "minimum": 1, "maximum": 3650, "description": "As asked."},
    "checks": )" + tableSchema(checkSchema(), "What was looked for.", {"kind", "state", "reason"}) +
                      R"(,
    "exposure": )" +
                      tableSchema(monthSchema(), "The last twelve months, this one last.",
                                  {"month", "exposedSeconds"}) +
                      R"(,
    "items": )" +
                      tableSchema(itemSchema(), "What was found, the worst first.",
                                  {"severity", "kind", "objects", "text"}));
}

}  // namespace host
