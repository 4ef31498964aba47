#include "branches.h"
#include "http_method.h"
#include "messages.h"
#include "request_keys.h"
#include "request_words.h"
#include "schema_names.h"
#include "service_exceptions.h"
#include "shared_rows.h"

namespace {

constexpr wchar_t kBranch[] = L"disks";

RefusalRows unknownDisk() { return {absentRefusal(kMsgDiskNotFound)}; }

FieldRow spareField() {
  FieldRow field = requiredField(keys::kAction, L"Makes it a spare, or a plain disk again.");
  field.words = {request_words::kMark, request_words::kUnmark};
  return field;
}

}  // namespace

RouteRows diskRows() {
  return {
      {RouteId::kClearDisk,
       L"clearDisk",
       HttpMethod::kPut,
       kBranch,
       L"{diskId}/clear",
       L"Clears a disk of the traces of an array.",
       L"What tells of arrays and volumes on it is erased, so that it can be used as a plain disk. Data of "
       L"volumes on "
       L"it cannot be had again.",
       Effect::kDestroys,
       Role::kAdminister,
       {schemas::kDiskChange},
       withPicture({unknownDisk(), {unsupportedRefusal(kMsgNotADisk)}}),
       Judgement::kNoBodyThenQuery,
       {},
       {},
       {{L"VexDiskClearMetadata"}, kErrorDiskInvalidState},
       {{Fate::kOverwritten, L"disk", keys::kDiskId, L"itself",
         L"What the disk {diskId} knows of arrays and volumes is erased."}}},
      {RouteId::kSetDiskSpare,
       L"setDiskSpare",
       HttpMethod::kPut,
       kBranch,
       L"{diskId}/spare",
       L"Makes a disk a spare, or a plain disk again.",
       L"A spare waits for any array of its controller; a rebuild onto it starts by itself, and overwrites "
       L"it.",
       Effect::kDestroys,
       Role::kOperate,
       {schemas::kDiskChange},
       withPicture({unknownDisk(),
                    {unsupportedRefusal(kMsgSpareX8),
                     {kErrorDiskInvalidState, kMsgSpareX8, RefusalKind::kUnsupported},
                     requestRefusal(kMsgInvalidAction)}}),
       Judgement::kBodyThenQuery,
       {},
       {spareField()},
       {{L"VexDiskMarkAsSpare", L"VexDiskUnmarkAsSpare"}, kErrorDiskInvalidState},
       {{Fate::kChanges,
         L"disk",
         keys::kDiskId,
         L"itself",
         L"The disk {diskId} becomes a spare.",
         {keys::kAction, request_words::kMark}},
        {Fate::kOverwritten,
         L"disk",
         keys::kDiskId,
         L"itself",
         L"Everything on the disk {diskId} is lost.",
         {keys::kAction, request_words::kMark}},
        {Fate::kChanges,
         L"volume",
         keys::kDiskId,
         L"volumes",
         L"A degraded volume may start to rebuild onto it at once.",
         {keys::kAction, request_words::kMark}},
        {Fate::kChanges,
         L"disk",
         keys::kDiskId,
         L"disks",
         L"The disk that it takes the place of leaves the array.",
         {keys::kAction, request_words::kMark}},
        {Fate::kChanges,
         L"disk",
         keys::kDiskId,
         L"itself",
         L"The disk {diskId} is no spare any more.",
         {keys::kAction, request_words::kUnmark}}}},
      {RouteId::kMarkDiskNormal,
       L"markDiskNormal",
       HttpMethod::kPut,
       kBranch,
       L"{diskId}/marknormal",
       L"Tries a failed disk again.",
       L"The disk counts as sound from then on; where it is still a member, its volumes may start to rebuild "
       L"onto it.",
       Effect::kDestroys,
       Role::kAdminister,
       {schemas::kDiskChange},
       withPicture({unknownDisk()}),
       Judgement::kNoBodyThenQuery,
       {},
       {},
       {{L"VexDiskMarkAsNormal"}, kErrorDiskInvalidState},
       {{Fate::kChanges, L"disk", keys::kDiskId, L"itself", L"The disk {diskId} counts as sound."},
        {Fate::kChanges, L"volume", keys::kDiskId, L"volumes",
         L"Where it is a member, its volumes may start to rebuild onto it."},
        {Fate::kOverwritten, L"disk", keys::kDiskId, L"itself",
         L"A rebuild onto the disk {diskId} overwrites what is on it."}}},
      {RouteId::kResetDiskSmart,
       L"resetDiskSmart",
       HttpMethod::kPut,
       kBranch,
       L"{diskId}/resetsmart",
       L"Takes the SMART event of a disk back.",
       L"The disk no longer counts as about to fail, until it reports itself again.",
       Effect::kChanges,
       Role::kOperate,
       {schemas::kDiskChange},
       withPicture({unknownDisk()}),
       Judgement::kNoBodyThenQuery,
       {},
       {},
       {{L"VexDiskResetSmartEvent"}},
       {{Fate::kChanges, L"disk", keys::kDiskId, L"itself",
         L"The SMART event of the disk {diskId} is forgotten."}}},
      {RouteId::kRemoveDisk,
       L"removeDisk",
       HttpMethod::kDelete,
       kBranch,
       L"{diskId}",
       L"Lets go of a hot-plug disk, so that it may be pulled out.",
       L"The disk vanishes from the machine until it is put in again. Only disks with managed hot-plug can "
       L"be let go.",
       Effect::kChanges,
       Role::kOperate,
       {},
       withPicture({unknownDisk()}),
       Judgement::kQuery,
       {},
       {},
       {{L"VexPhyRemove"}},
       {{Fate::kGoes, L"disk", keys::kDiskId, L"itself",
         L"The disk {diskId} leaves the machine; its data stay on it."},
        {Fate::kChanges, L"disk", keys::kDiskId, L"itself",
         L"Where it is a member, its array counts it as missing."},
        {Fate::kChanges, L"volume", keys::kDiskId, L"volumes",
         L"The volumes of its array lose a member, and fail where they can spare none."},
        {Fate::kGoes, L"port", keys::kDiskId, L"ports", L"Its own port goes."},
        {Fate::kChanges, L"port", keys::kDiskId, L"ports", L"The port that it was plugged into is empty."}}},
  };
}
