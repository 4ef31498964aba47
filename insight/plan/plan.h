#ifndef MIRN_INSIGHT_PLAN_PLAN_H
#define MIRN_INSIGHT_PLAN_PLAN_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "jobs/job_statistics.h"
#include "plan/operation_effects.h"
#include "plan/request_arguments.h"
#include "plugin_extensions.h"
#include "view/machine_view.h"
#include "view/object_ref.h"

namespace insight {

/// An object as it will be. What is not known of it, or stays, is empty.
struct PlannedObject {
  ObjectRef object;  ///< Without an id where it comes; without a name where nobody gives it one.
  std::wstring level;
  std::vector<ObjectRef> members;
  std::optional<std::uint64_t> aboutBytes;  ///< In all. The library rounds.
};

struct PlannedEffect {
  std::wstring fate;  ///< "comes", "changes", "goes" or "overwritten".
  std::wstring text;  ///< One sentence.
  std::vector<PlannedObject> objects;
  bool isIndirect = false;  ///< The objects are met through another one that the request names.
};

struct PlannedLoss {
  ObjectRef object;
  std::wstring text;
};

/// What goes on in the machine after the answer.
struct PlannedWork {
  std::string kind;  ///< A job's.
  ObjectRef object;
  std::optional<std::int64_t> likelySeconds;  ///< Nothing while no such job has ended.
  std::uint64_t jobs = 0;                     ///< Of so many that ended.
};

/// How many disks a volume may lose, whichever they are.
struct PlannedRedundancy {
  ObjectRef object;
  std::optional<std::uint64_t> now;  ///< Nothing for one that comes.
  std::uint64_t meanwhile = 0;       ///< Until work is over, or what has been lost comes back.
};

/// What a request will do, as far as it can be told ahead: the library decides. Plain value.
struct Plan {
  ovra::PluginPosition position;  ///< Of the machine that it holds for.
  std::vector<PlannedEffect> effects;
  std::vector<PlannedLoss> lost;
  std::vector<PlannedWork> work;
  std::vector<PlannedRedundancy> redundancy;
  std::vector<std::wstring> warnings;
};

/// Of a request that the plug-in would hand to the library. `statistics` tell how such work went before.
Plan planOf(const RequestArguments& request, const OperationEffects& told, const MachineView& machine,
            const std::vector<JobStatistics>& statistics);

}  // namespace insight

#endif
