#include "branches.h"
#include "http_method.h"
#include "messages.h"
#include "request_keys.h"
#include "schema_names.h"
#include "shared_rows.h"

namespace {

constexpr wchar_t kBranch[] = L"controllers";

RefusalRows unknownController() { return {absentRefusal(kMsgControllerNotFound)}; }

RefusalRows switchRefusals() {
  return withPicture({unknownController(), {requestRefusal(kMsgInvalidState)}});
}

}  // namespace

RouteRows controllerRows() {
  return {
      {RouteId::kListControllers,
       L"listControllers",
       {L"controllers", L"list"},
       HttpMethod::kGet,
       kBranch,
       L"",
       L"Lists all controllers.",
       L"Those of type Lyx first, the others by their type.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kController, true},
       withPicture()},
      {RouteId::kListControllerDevices,
       L"listControllerDevices",
       {L"controllers", L"disks"},
       HttpMethod::kGet,
       kBranch,
       L"{controllerId}/enddevices",
       L"Lists the end devices of a controller.",
       L"Disks and other devices alike.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kDevice, true},
       withPicture({unknownController()})},
      {RouteId::kListControllerArrays,
       L"listControllerArrays",
       {L"controllers", L"arrays"},
       HttpMethod::kGet,
       kBranch,
       L"{controllerId}/arrays",
       L"Lists the arrays of a controller.",
       L"Those whose members hang under it.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kArray, true},
       withPicture({unknownController()})},
      {RouteId::kListControllerPorts,
       L"listControllerPorts",
       {L"controllers", L"ports"},
       HttpMethod::kGet,
       kBranch,
       L"{controllerId}/ports",
       L"Lists the ports of a controller.",
       L"Whether something is plugged in or not.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kPort, true},
       withPicture({unknownController()})},
      {RouteId::kListControllerVolumes,
       L"listControllerVolumes",
       {L"controllers", L"volumes"},
       HttpMethod::kGet,
       kBranch,
       L"{controllerId}/volumes",
       L"Lists the volumes of a controller.",
       L"Those whose members hang under it.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kVolume, true},
       withPicture({unknownController()})},
      {RouteId::kSetControllerReadPatrol,
       L"setControllerReadPatrol",
       {L"controllers", L"set-read-patrol"},
       HttpMethod::kPut,
       kBranch,
       L"{controllerId}/readpatrol",
       L"Switches the read patrol of a controller.",
       L"The read patrol reads all disks in the background, so that bad blocks are found in time.",
       Effect::kChanges,
       Role::kAdminister,
       {schemas::kControllerSwitch},
       switchRefusals(),
       Judgement::kBodyThenQuery,
       {},
       {stateField(L"On or off.")},
       {{L"VexReadPatrolSetState"}},
       {{Fate::kChanges, L"controller", keys::kControllerId, L"itself",
         L"The read patrol of the controller {controllerId} is switched."}}},
      {RouteId::kSetControllerRohi,
       L"setControllerRohi",
       {L"controllers", L"set-rohi"},
       HttpMethod::kPut,
       kBranch,
       L"{controllerId}/rohi",
       L"Switches the rebuild on hot insert of a controller.",
       L"Where it is on, a disk put into the bay of a lost one is taken for the rebuild without being asked "
       L"for.",
       Effect::kChanges,
       Role::kAdminister,
       {schemas::kControllerSwitch},
       switchRefusals(),
       Judgement::kBodyThenQuery,
       {},
       {stateField(L"On or off.")},
       {{L"VexROHISetState"}},
       {{Fate::kChanges, L"controller", keys::kControllerId, L"itself",
         L"The rebuild on hot insert of the controller {controllerId} is switched."}}},
  };
}
