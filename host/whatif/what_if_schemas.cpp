#include "whatif/what_if_schemas.h"

#include "insight/schema_parts.h"
#include "whatif/what_if_events.h"

namespace host {

namespace {

constexpr char kInteger[] = R"("integer")";

std::string eventSchema(const std::string& name, const std::string& value) {
  return recordSchema('"' + name + R"(": )" + value);
}

std::string outcomeSchema() {
  return recordSchema(R"("event": {"type": "string", "enum": ["fail", "pull", "wait"]},
    "object": {"type": ["object", "null"], "description": "The disk; null for time that passes."},
    "atSeconds": )" + secondsSchema(kInteger, "From the first event.") +
                      R"(, "happened": {"type": "boolean",
      "description": "False where it could not: the disk had failed, or was not there, already."})");
}

std::string changeSchema() {
  return recordSchema(R"("object": )" + objectSchema() + R"(, "atSeconds": )" +
                      secondsSchema(kInteger, "From the first event.") +
                      R"(, "from": {"type": "string"}, "to": {"type": "string"})");
}

std::string takeoverSchema() {
  return recordSchema(R"("object": )" + objectSchema() + R"(, "instead": )" + objectSchema() +
                      R"(, "array": {"type": ["object", "null"]}, "atSeconds": )" +
                      secondsSchema(kInteger, "From the first event."));
}

std::string exposureSchema() {
  return recordSchema(
      R"("object": )" + objectSchema() + R"(, "fromSeconds": )" +
      secondsSchema(kInteger, "From the first event.") +
      R"(, "already": {"type": "boolean", "description": "It was so before the first event."},
    "seconds": )" +
      secondsSchema(R"(["integer", "null"])", "How long it lasts; null where it does not end by itself."));
}

}  // namespace

std::string whatIfEventsSchema() {
  const std::string disk = R"({"type": "string", "description": "The id of a disk."})";
  const std::string seconds =
      R"({"type": "integer", "minimum": 0, "maximum": )" + std::to_string(kLongestWaitSeconds) + "}";
  return recordSchema(
      R"("events": {"type": "array", "minItems": 1, "maxItems": )" + std::to_string(kMostWhatIfEvents) +
      R"(, "description": "One after the other: a disk fails, is pulled out, or seconds pass.",
    "items": {"oneOf": [)" +
      eventSchema("fail", disk) + ", " + eventSchema("pull", disk) + ", " + eventSchema("wait", seconds) +
      "]}}");
}

std::string whatIfSchema() {
  return recordSchema(
      R"("position": )" + positionSchema() + R"(, "events": )" +
      tableSchema(outcomeSchema(), "What was asked for, and whether it happened.",
                  {"atSeconds", "event", "object", "happened"}) +
      R"(, "changes": )" +
      tableSchema(changeSchema(), "States of volumes, in the order of time, until nothing goes on by itself.",
                  {"atSeconds", "object", "from", "to"}) +
      R"(, "takesOver": )" +
      tableSchema(takeoverSchema(), "Disks that take the place of others.",
                  {"atSeconds", "object", "instead", "array"}) +
      R"(, "lost": )" + listSchema(objectSchema(), "Volumes that serve now and do not in the end.") +
      R"(, "exposure": )" +
      tableSchema(exposureSchema(), "Times in which a volume has not the redundancy of its level.",
                  {"object", "fromSeconds", "already", "seconds"}) +
      R"(, "assumed": {"type": "array", "items": {"type": "string"},
    "description": "What nobody tells, and what was taken for it."},
    "libraryDecides": {"type": "boolean", "const": true, "description": "The real machine may do otherwise."})");
}

}  // namespace host
