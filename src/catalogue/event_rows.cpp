#include "branches.h"
#include "http_method.h"
#include "messages.h"
#include "request_keys.h"
#include "schema_names.h"
#include "shared_rows.h"

namespace {

FieldRow ageField() {
  FieldRow field = requiredField(keys::kTime, L"Of the last so many seconds.");
  field.unit = L"s";
  field.range = {0, 4294967295};
  return field;
}

}  // namespace

RouteRows eventRows() {
  return {
      {RouteId::kListEvents,
       L"listEvents",
       {L"events", L"list"},
       HttpMethod::kGet,
       L"events",
       L"",
       L"Lists what happened, the newest first.",
       L"The last 1000 events of disks and volumes at most. Their times are local.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kEvent, true, true},
       {requestRefusal(kMsgInvalidTime)},
       Judgement::kQuery,
       {ageField()}},
  };
}
