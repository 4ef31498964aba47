#ifndef MIRN_HOST_API_CHANGE_PLAN_H
#define MIRN_HOST_API_CHANGE_PLAN_H

#include <functional>
#include <string>
#include <vector>

#include "answers/answer.h"
#include "ServiceObject.h"

namespace host {

/// A change that a client asks for ahead.
struct AskedChange {
  std::string operation;               ///< Its id.
  std::vector<std::wstring> segments;  ///< Behind the plug-in's key.
  ovra::data_transfer::ServiceObject body;
};

/// Who can tell more of a plug-in's changes than its rehearsals do.
struct ChangePlans {
  using Rehearse = std::function<ovra::data_transfer::ServiceObject()>;

  /// Answers with what the rehearsal tells, and more; a refusal of it leaves as it came. The rehearsal may be
  /// called again, when the machine has changed under it. Safe from any thread. Empty: there is nobody.
  std::function<Answer(const AskedChange& change, const Rehearse& rehearse)> make{};

  /// JSON Schema of what is told beyond the rehearsal. Outlives the endpoints.
  const std::string* schema = nullptr;
};

}  // namespace host

#endif
