#ifndef MIRN_INSIGHT_PLAN_OPERATION_EFFECTS_H
#define MIRN_INSIGHT_PLAN_OPERATION_EFFECTS_H

#include <map>
#include <string>
#include <vector>

#include "ServiceObject.h"

/// What a plug-in tells of what its operations do (`described_plugin_1`), as plain values. Texts are empty
/// where nothing is told; src/catalogue/route_row.h says what the words mean.

namespace insight {

/// An effect or a work counts where this argument is there, and reads so.
struct TellsWhen {
  std::wstring field;  ///< Empty: always.
  std::wstring word;   ///< Empty: whatever it reads.
};

/// The arguments that tell what an object becomes.
struct TellsShape {
  std::wstring level;
  std::wstring size;
  std::wstring disks;
  std::wstring array;
  bool fillsArray = false;
};

struct OperationEffect {
  std::wstring fate;  ///< "comes", "changes", "goes" or "overwritten".
  std::wstring type;
  std::wstring argument;
  std::wstring relation;
  std::wstring text;
  TellsWhen when;
  std::wstring where;
  std::wstring except;
  TellsShape becomes;
};

struct OperationWork {
  std::wstring kind;  ///< A job's: "rebuild".
  std::wstring on;    ///< The argument that names the object it goes on in.
  TellsWhen when;
};

struct OperationEffects {
  std::vector<OperationEffect> effects;
  std::vector<OperationWork> works;
};

/// By the ids of all operations.
std::map<std::wstring, OperationEffects> effectsOf(const ovra::data_transfer::ServiceObject& description);

}  // namespace insight

#endif
