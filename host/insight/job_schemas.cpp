#include "insight/job_schemas.h"

#include "insight/schema_parts.h"

namespace host {

namespace {

std::string statisticsSchema() {
  return recordSchema(R"(
    "kind": {"type": "string"},
    "volumeId": {"type": ["string", "null"], "description": "Null for all volumes."},
    "count": {"type": "integer", "minimum": 1},
    "completed": {"type": "integer", "minimum": 0},
    "medianSeconds": {
      "type": ["integer", "null"],
      "minimum": 0,
      "x-mirn": {"unit": "s"},
      "description": "Of those completed that were seen from start to end; null where there is none."
    })");
}

}  // namespace

std::string jobSchema() {
  return recordSchema(R"(
    "id": {"type": "string"},
    "kind": {"type": "string", "description": "rebuild, initialize, verify, migrate, or the machine's own word."},
    "state": {"type": "string", "enum": ["running", "ended"]},
    "object": )" + objectSchema() +
                      R"(,
    "actor": {"type": "string", "description": "Who had it begun; machine where that is no client of ours."},
    "start": )" + maybeMomentSchema("Null where it was found running.") +
                      R"(,
    "seenFrom": )" + momentSchema("When it was seen first.") +
                      R"(,
    "seenTo": )" + momentSchema("When it was last seen running.") +
                      R"(,
    "end": {
      "type": ["string", "null"],
      "description": "When it was seen to have ended; null while it runs, unknown where nobody watched."
    },
    "outcome": {
      "type": ["string", "null"],
      "enum": ["completed", "cancelled", "failed", "ended", null],
      "description": "Null while it runs; ended where the rest is not known."
    },
    "percent": {"type": ["integer", "null"], "minimum": 0, "maximum": 100, "description": "The last that was seen."},
    "percentPerHour": {"type": ["number", "null"], "description": "Null before it can be told, and in the end."},
    "timeLeftSeconds": {
      "type": ["integer", "null"],
      "minimum": 0,
      "x-mirn": {"unit": "s"},
      "description": "Null before it can be told, and in the end."
    })");
}

std::string jobsSchema() {
  return recordSchema(
      R"(
    "position": )" +
      positionSchema() + R"(,
    "items": )" +
      listSchema(jobSchema(),
                 "Of the running ones that first which runs the longest, else that which ended last.") +
      R"(,
    "next": )" +
      nextSchema());
}

std::string jobStatisticsSchema() {
  return recordSchema(R"(
    "items": )" + listSchema(statisticsSchema(), "By kind, and by kind and volume."));
}

}  // namespace host
