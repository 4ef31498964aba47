#ifndef MIRN_INSIGHT_HEALTH_CAUSE_H
#define MIRN_INSIGHT_HEALTH_CAUSE_H

#include <map>
#include <string>
#include <vector>

#include "health/severity.h"
#include "view/object_ref.h"

namespace insight {

/// What to do next: an operation of the plug-in, and what is known of its arguments.
struct NextStep {
  std::string operation;                          ///< Its id: "rebuildVolume".
  std::map<std::string, std::wstring> arguments;  ///< By name, of path and body: {"volumeId", "7"}.
};

/// One thing that is wrong, as the machine stands. Plain value.
struct Cause {
  std::string kind;  ///< "volume-degraded".
  Severity severity = Severity::kWarning;
  ObjectRef object;
  std::vector<ObjectRef> path;    ///< From the server's controller down to the object.
  std::string text;               ///< One sentence for people, UTF-8.
  std::vector<ObjectRef> atRisk;  ///< Volumes that may be lost by it, or are.
  std::vector<NextStep> steps;

  /// The same for as long as it lasts, and when it comes back: kind and object.
  std::string id() const;
};

}  // namespace insight

#endif
