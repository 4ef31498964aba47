#ifndef MIRN_INSIGHT_PLAN_REQUEST_ARGUMENTS_H
#define MIRN_INSIGHT_PLAN_REQUEST_ARGUMENTS_H

#include <string>
#include <vector>

#include "actions/operation.h"
#include "plan/operation_effects.h"
#include "ServiceObject.h"
#include "view/machine_view.h"

namespace insight {

/// What a request says to its operation, by the names of the arguments. The operation outlives this.
class RequestArguments {
 public:
  /// `segments` are those behind the operation's key.
  RequestArguments(const Operation& operation, const std::vector<std::wstring>& segments,
                   const ovra::data_transfer::ServiceObject& body);

  /// The texts of an argument; none where it is not given.
  std::vector<std::wstring> valuesOf(const std::wstring& argument) const;
  /// The first of them; empty where there is none.
  std::wstring valueOf(const std::wstring& argument) const;
  /// Of the body, in the order of the operation's fields.
  std::vector<std::wstring> given() const;

  bool fulfil(const TellsWhen& when) const;

  /// The text with names and values in place of the arguments in braces.
  std::wstring filledIn(const std::wstring& text, const MachineView& machine) const;

 private:
  std::wstring toldAs(const std::wstring& argument, const MachineView& machine) const;
  std::wstring typeOf(const std::wstring& argument) const;

  const Operation& m_operation;
  std::wstring m_objectId;  // that the path names
  const ovra::data_transfer::ServiceObject m_body;
};

}  // namespace insight

#endif
