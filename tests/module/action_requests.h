#ifndef MIRN_TESTS_MODULE_ACTION_REQUESTS_H
#define MIRN_TESTS_MODULE_ACTION_REQUESTS_H

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "module/served_module.h"
#include "scripted_library/scripted_machine.h"

/// A machine of as few objects as every request of `actionRequests` can do with: one of each kind, but three
/// disks, of which one is free. Only the name of the array differs from machine to machine.
ScriptedMachine tinyMachine(const std::string& arrayName);

/// How a refused action shows.
struct RefusalRule {
  const char* exceptionClass;
  VEX_STATUS mappedStatus;    ///< 0: none.
  const char* mappedErrorId;  ///< For that status in place of its own id.
};

/// A request that is valid on the tiny machine and makes the library do something.
struct ActionRequest {
  std::string name;
  Request request;
  std::string operation;  ///< What the library does; the first call of the request.
  RefusalRule refusal;
  std::function<void(ScriptedMachine&)> effect;    ///< What that does to the machine.
  ovra::data_transfer::ServiceObject answer;       ///< When the picture shows the effect.
  ovra::data_transfer::ServiceObject staleAnswer;  ///< When the picture is still the one from before.
};

inline std::ostream& operator<<(std::ostream& stream, const ActionRequest& row) { return stream << row.name; }

/// One for each route that acts, and for each action of those that have several.
std::vector<ActionRequest> actionRequests();

#endif
