#ifndef MIRN_INSIGHT_ACTIONS_LOOK_H
#define MIRN_INSIGHT_ACTIONS_LOOK_H

#include <string>
#include <vector>

#include "actions/operation.h"
#include "plugin_extensions.h"

namespace insight {

enum class Verdict { kAllowed, kRefused, kNeeds };

/// What can be done with an object: an operation, or one fixed word of it.
struct Action {
  const Operation* operation = nullptr;
  std::wstring field;  ///< The argument that reads `word`; empty: there is no such.
  std::wstring word;
  Verdict verdict = Verdict::kAllowed;
  std::wstring errorId;                      ///< Of a refusal; empty where it has none.
  std::wstring words;                        ///< Of a refusal.
  std::vector<const OperationField*> needs;  ///< What is to be told, too.
};

/// What the plug-in says of each operation on an object of this type. The library keeps the last word.
/// `operations` outlive the actions.
std::vector<Action> actionsOn(const std::wstring& type, const std::wstring& id,
                              const std::vector<Operation>& operations, ovra::rehearsed_plugin_1& plugin);

/// The segments of an operation on this object.
std::vector<std::wstring> segmentsOn(const std::wstring& id, const Operation& operation);

}  // namespace insight

#endif
