#include "branches.h"
#include "http_method.h"
#include "messages.h"
#include "request_keys.h"
#include "schema_names.h"
#include "service_exceptions.h"
#include "shared_rows.h"

using ovra::request_validator::FieldPresence;

namespace {

constexpr wchar_t kBranch[] = L"arrays";

RefusalRows unknownArray() { return {absentRefusal(kMsgArrayNotFound)}; }

}  // namespace

RouteRows arrayRows() {
  return {
      {RouteId::kListArrays,
       L"listArrays",
       {L"arrays", L"list"},
       HttpMethod::kGet,
       kBranch,
       L"",
       L"Lists all arrays.",
       L"An array is a group of disks that hold one or two volumes.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kArray, true},
       withPicture()},
      {RouteId::kListArrayDevices,
       L"listArrayDevices",
       {L"arrays", L"disks"},
       HttpMethod::kGet,
       kBranch,
       L"{arrayId}/enddevices",
       L"Lists the disks of an array.",
       L"Its members, whatever their state.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kDevice, true},
       withPicture({unknownArray()})},
      {RouteId::kListArrayVolumes,
       L"listArrayVolumes",
       {L"arrays", L"volumes"},
       HttpMethod::kGet,
       kBranch,
       L"{arrayId}/volumes",
       L"Lists the volumes of an array.",
       L"None, one or two.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kVolume, true},
       withPicture({unknownArray()})},
      {RouteId::kAddArrayDisks,
       L"addArrayDisks",
       {L"arrays", L"add-disks"},
       HttpMethod::kPut,
       kBranch,
       L"{arrayId}",
       L"Adds disks to an array; its volumes migrate onto them.",
       L"What is on the new disks is overwritten. Until the migration ends the volumes go on serving, and "
       L"the room "
       L"that is won is free afterwards.",
       Effect::kDestroys,
       Role::kAdminister,
       {schemas::kArrayDisks},
       withPicture({unknownArray(),
                    {absentRefusal(kMsgInvalidDiskId), unsupportedRefusal(kMsgAddDiskSectorSize),
                     unsupportedRefusal(kMsgAddX8Disk)}}),
       Judgement::kBodyThenQuery,
       {},
       {diskListField(FieldPresence::kRequired, L"The ids of the disks to add.", keys::kArrayId)},
       {{L"VexAddDisksToArray"}, kErrorArrayInvalidState},
       {{Fate::kChanges,
         L"array",
         keys::kArrayId,
         L"itself",
         L"The array {arrayId} grows by {disks}.",
         {},
         nullptr,
         nullptr,
         {nullptr, nullptr, keys::kDisks}},
        {Fate::kChanges, L"volume", keys::kArrayId, L"volumes",
         L"The volumes of the array {arrayId} migrate onto all its disks."},
        {Fate::kOverwritten, L"disk", keys::kDisks, L"itself", L"Everything on {disks} is overwritten."}},
       {{WorkKind::kMigrate, keys::kArrayId}}},
      {RouteId::kSetArrayWriteCache,
       L"setArrayWriteCache",
       {L"arrays", L"set-write-cache"},
       HttpMethod::kPut,
       kBranch,
       L"{arrayId}/writecache",
       L"Switches the write cache of an array's disks.",
       L"With the cache, a disk reports data as written before they are; they are lost with the power.",
       Effect::kChanges,
       Role::kAdminister,
       {schemas::kArrayCacheChange},
       withPicture(
           {unknownArray(), {unsupportedRefusal(kMsgNoWriteCache), requestRefusal(kMsgInvalidState)}}),
       Judgement::kBodyThenQuery,
       {},
       {stateField(L"On or off.")},
       {{L"VexArraySetWriteCacheState"}},
       {{Fate::kChanges, L"array", keys::kArrayId, L"itself",
         L"The write cache of the array {arrayId} is switched."},
        {Fate::kChanges, L"disk", keys::kArrayId, L"disks", L"So is that of each of its disks."}}},
  };
}
