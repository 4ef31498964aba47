#ifndef MIRN_INSIGHT_ACTIONS_CANDIDATES_H
#define MIRN_INSIGHT_ACTIONS_CANDIDATES_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "actions/operation.h"
#include "plugin_extensions.h"
#include "view/machine_view.h"
#include "view/object_ref.h"

namespace insight {

/// A value that may stand in an argument, and what the plug-in says of it.
struct Candidate {
  std::wstring value;
  std::optional<ObjectRef> object;  ///< What it names, where it is an id.
  bool isAllowed = true;
  std::wstring errorId;  ///< Of a refusal; empty where it has none.
  std::wstring words;    ///< Of a refusal.
};

/// What a size may be, in mebibytes. The library rounds, and decides.
struct SizeBounds {
  std::uint64_t least = 0;
  std::uint64_t most = 0;
};

/// One argument of an operation on an object.
struct CandidateQuestion {
  const Operation& operation;
  const OperationField& field;
  std::wstring objectId;
  std::map<std::wstring, std::wstring> given;  ///< What is known of the other arguments; lists with commas.
};

/// All values that may stand there, not judged yet, in the order of the machine's lists.
std::vector<Candidate> candidatesFor(const CandidateQuestion& question, const MachineView& machine);

/// Of a size; nothing for another argument, or where the object is not known.
std::optional<SizeBounds> sizeBoundsFor(const CandidateQuestion& question, const MachineView& machine);

/// Asks for each of them, over one picture.
void judge(std::vector<Candidate>& candidates, const CandidateQuestion& question,
           ovra::rehearsed_plugin_1& plugin);

}  // namespace insight

#endif
