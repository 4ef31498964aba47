#ifndef MIRN_INSIGHT_ACTIONS_OPERATION_H
#define MIRN_INSIGHT_ACTIONS_OPERATION_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ServiceObject.h"

/// What a plug-in tells of its operations (`described_plugin_1`), as plain values.

namespace insight {

/// Where the values of an argument are found.
struct CandidateSource {
  std::wstring from;                 ///< "disk", "disks", "array", "level", "strip" or "size".
  std::wstring of;                   ///< The argument that they depend on; empty: none.
  std::vector<std::wstring> usages;  ///< Of disks: one of these.
};

/// An argument in the body.
struct OperationField {
  std::wstring name;
  std::wstring type;  ///< "text", "number", "boolean" or "list".
  bool isRequired = false;
  std::wstring help;
  std::wstring unit;
  std::wstring refersTo;  ///< The type of object whose id it holds, or a list of such ids; empty: none.
  std::vector<std::wstring> words;
  std::optional<CandidateSource> candidates;
  std::wstring whenField;  ///< It counts with this argument alone; empty: always.
  std::wstring whenWord;   ///< And where that reads so; empty: whatever it reads.
};

/// An operation that does something.
struct Operation {
  std::wstring id;
  std::wstring effect;
  std::wstring role;
  std::int32_t method = 0;
  std::wstring key;
  std::vector<std::wstring> segments;  ///< Behind the key; the object's place reads as `argument` in braces.
  std::wstring argument;               ///< Names the object in the path; empty: it is about none.
  std::wstring objectType;             ///< Of that; "service" where it is about none.
  std::vector<OperationField> fields;
  /// Error id and words of refusals for what was asked, rather than for how the machine stands.
  std::vector<std::pair<std::wstring, std::wstring>> requestRefusals;

  /// Null where there is none of the name.
  const OperationField* field(const std::wstring& name) const;
};

/// All but those that only read, in the order of the description. One with more than one object in its path
/// is left out.
std::vector<Operation> operationsOf(const ovra::data_transfer::ServiceObject& description);

}  // namespace insight

#endif
