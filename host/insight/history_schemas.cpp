#include "insight/history_schemas.h"

#include "insight/schema_parts.h"

namespace host {

namespace {

std::string entrySchema() {
  return recordSchema(R"(
    "row": {"type": "integer", "minimum": 1, "description": "Rises with every entry."},
    "at": )" + momentSchema("When it happened.") +
                      R"(,
    "kind": )" + wordSchema(kEntryKinds) +
                      R"(,
    "severity": )" + severitySchema() +
                      R"(,
    "actor": {"type": ["string", "null"], "description": "Who did it; null where nobody is known."},
    "object": {"oneOf": [{"type": "null"}, )" +
                      objectSchema() + R"(]},
    "operation": {
      "type": ["string", "null"],
      "description": "What was done or has happened; of an alarm, the kind of its cause."
    },
    "outcome": {"type": ["string", "null"], "description": "How it went; null where that is no question."},
    "details": {"type": "object", "description": "The rest, by kind."})");
}

}  // namespace

const std::vector<std::string> kEntryKinds{"event", "job", "alarm", "audit", "service"};

std::string historySchema() {
  return recordSchema(
      R"(
    "items": )" +
      listSchema(entrySchema(), "The newest first. A page may be short, even empty, and not be the last.") +
      R"(,
    "next": )" +
      nextSchema());
}

}  // namespace host
