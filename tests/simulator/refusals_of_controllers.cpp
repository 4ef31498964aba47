#include "simulator/refusal_rows.h"

std::vector<RefusalRow> controllerRefusals() {
  using W = const Workbench&;
  const auto handleOf = [](W w, const char* id) { return w.controller(id).controllerHandle; };
  return {
      {"VexReadPatrolSetState", 3, "NoController", [](W) { return VexReadPatrolSetState(kNothing, 1); }},
      {"VexReadPatrolSetState", 14, "ControllerWithout",
       [=](W w) { return VexReadPatrolSetState(handleOf(w, "B"), 1); }},
      {"VexReadPatrolSetState", 2, "NoSwitch",
       [=](W w) { return VexReadPatrolSetState(handleOf(w, "A"), 2); }},
      {"VexROHISetState", 3, "NoController", [](W) { return VexROHISetState(kNothing, 1); }},
      {"VexROHISetState", 14, "ControllerWithout", [=](W w) { return VexROHISetState(handleOf(w, "B"), 1); }},
      {"VexROHISetState", 2, "NoSwitch", [=](W w) { return VexROHISetState(handleOf(w, "A"), 2); }},
      {"VexPortLocate", 3, "NoPort", [](W) { return VexPortLocate(kNothing, 1); }},
      {"VexPortLocate", 14, "ControllerWithout",
       [](W w) { return VexPortLocate(w.port("port B").portHandle, 1); }},
      {"VexPortLocate", 2, "NoSwitch", [](W w) { return VexPortLocate(w.port("port A").portHandle, 2); }},
  };
}
