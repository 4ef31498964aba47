#ifndef MIRN_HOST_ANSWERS_REFUSAL_KINDS_H
#define MIRN_HOST_ANSWERS_REFUSAL_KINDS_H

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "refusal_kind.h"
#include "ServiceObject.h"

namespace host {

/// The kind that a description calls by this word; nothing when the host knows none.
std::optional<RefusalKind> refusalKindOf(const std::wstring& word);

/// What kind of refusal an operation's failure is, by its error id and words as the plug-in describes them.
/// Constant after construction.
class RefusalKinds {
 public:
  using Value = ovra::data_transfer::ServiceObject;

  /// Nothing is described: the error id alone counts.
  RefusalKinds() = default;

  /// `description` is what the plug-in tells of itself, `route` the operation's part of it.
  RefusalKinds(const Value& description, const Value& route);

  /// A pair that nobody described is of the kind that its error id has everywhere.
  RefusalKind of(const std::string& errorId, const std::string& words) const;

 private:
  void add(const Value& owner, const wchar_t* list);
  void addOne(const Value& refusal);

  std::map<std::pair<std::string, std::string>, RefusalKind> m_kinds;
};

}  // namespace host

#endif
