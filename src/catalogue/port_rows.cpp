#include "branches.h"
#include "enumerations.h"
#include "http_method.h"
#include "messages.h"
#include "schema_names.h"
#include "shared_rows.h"

namespace {

constexpr wchar_t kBranch[] = L"ports";

/// The LED is only ever switched on: it goes out by the time-out.
FieldRow lightField() {
  FieldRow field = stateField(L"It goes out by itself, after the time that is set.");
  field.words = {toText(EnableState::ENABLED)};
  return field;
}

}  // namespace

RouteRows portRows() {
  return {
      {RouteId::kListPorts,
       L"listPorts",
       {L"ports", L"list"},
       HttpMethod::kGet,
       kBranch,
       L"",
       L"Lists all ports.",
       L"Of controllers and of end devices, each with the port that it is connected with.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kPort, true},
       withPicture()},
      {RouteId::kLocatePort,
       L"locatePort",
       {L"ports", L"locate"},
       HttpMethod::kPut,
       kBranch,
       L"{portId}/locate",
       L"Lights the locate LED of a port.",
       L"The LED shows the bay to whoever stands in front of the machine, for the time that is set.",
       Effect::kHarmless,
       Role::kOperate,
       {},
       withPicture({{absentRefusal(kMsgInvalidPortId), requestRefusal(kMsgInvalidState)}}),
       Judgement::kBodyThenQuery,
       {},
       {lightField()},
       {{L"VexPortLocate"}}},
  };
}
