#include "branches.h"
#include "http_method.h"
#include "schema_names.h"
#include "shared_rows.h"

RouteRows deviceRows() {
  return {
      {RouteId::kListDevices,
       L"listDevices",
       {L"disks", L"list"},
       HttpMethod::kGet,
       L"enddevices",
       L"",
       L"Lists all end devices.",
       L"Disks with their state and use, and devices that are no disks.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kDevice, true},
       withPicture()},
  };
}
