#include "insight/alarm_schemas.h"

#include "insight/health_schemas.h"
#include "insight/schema_parts.h"

namespace host {

namespace {

std::string acknowledgementSchema() {
  return R"({
  "type": ["object", "null"],
  "description": "Null where nobody has.",
  "properties": {
    "by": {"type": "string"},
    "at": )" +
         momentSchema("When.") + R"(
  },
  "required": ["by", "at"],
  "additionalProperties": false
})";
}

}  // namespace

std::string alarmSchema() {
  return recordSchema(causeMembers(momentSchema("When it was raised first.")) + R"(,
    "state": {"type": "string", "enum": ["open", "cleared"]},
    "cleared": {
      "type": ["string", "null"],
      "description": "When its cause had gone; null while it is open, unknown where nobody watched."
    },
    "count": {"type": "integer", "minimum": 1, "description": "How often it was raised, a minute between at most."},
    "acknowledged": )" +
                      acknowledgementSchema());
}

std::string alarmsSchema() {
  return recordSchema(
      R"(
    "position": )" +
      positionSchema() + R"(,
    "items": )" +
      listSchema(alarmSchema(),
                 "Of the open ones the worst first, then the longest; else that which cleared last.") +
      R"(,
    "next": )" +
      nextSchema());
}

}  // namespace host
