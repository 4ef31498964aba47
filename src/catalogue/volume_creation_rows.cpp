#include "volume_creation_rows.h"

#include "http_method.h"
#include "messages.h"
#include "request_keys.h"
#include "request_words.h"
#include "schema_names.h"
#include "service_exceptions.h"
#include "shared_rows.h"

using ovra::request_validator::FieldPresence;

namespace {

constexpr Condition kInArray = {keys::kSource, request_words::kArray};
constexpr Condition kFromDisks = {keys::kSource, request_words::kDisk};

FieldRow sourceField() {
  FieldRow field = requiredField(keys::kSource, L"In an array that is there, or from disks in a new one.");
  field.words = {request_words::kDisk, request_words::kArray};
  return field;
}

FieldRow arrayField() {
  FieldRow field = requiredField(keys::kArrayId, L"The array that takes the volume in.");
  field.refersTo = L"array";
  field.candidates = {L"array"};
  return field;
}

/// One of the request's own disks.
FieldRow sourceDiskField() {
  FieldRow field = diskField(keys::kDiskId, L"One of the disks, whose data the volume takes over.", nullptr);
  field.presence = FieldPresence::kOptional;
  field.candidates = {keys::kDisks};
  return field;
}

/// In the order in which complaints name them.
FieldRows creationFields() {
  return {
      levelField(),
      sourceField(),
      nameField(),
      stripField(),
      onlyWhen(
          diskListField(FieldPresence::kRequired, L"The ids of its disks, all on one controller.", nullptr),
          kFromDisks),
      sizeField(L"\"0\" for all that is free; of a second volume of an array it must be that.",
                keys::kArrayId),
      onlyWhen(arrayField(), kInArray),
      onlyWhen(sourceDiskField(), kFromDisks),
      writeHoleField(FieldPresence::kOptional),
      journalingDriveField(),
  };
}

RefusalRows creationRefusals() {
  return {
      requestRefusal(kMsgInvalidRaidLevel),
      requestRefusal(kMsgStripSizeOfRaid1),
      unsupportedRefusal(kMsgRwhNeedsRaid5),
      requestRefusal(kMsgInvalidSource),
      requestRefusal(kMsgInvalidSize),
      {kErrorInvalidRaidLevel, kMsgX8NeedsRaid0, RefusalKind::kRequest},
      requestRefusal(kMsgInvalidStripSize),
      {kErrorInternal, kMsgNoDefaultStripSize, RefusalKind::kFailure},
  };
}

RefusalRows refusalsInArray() {
  return {requestRefusal(kMsgInvalidArrayId), absentRefusal(kMsgArrayNotFound),
          requestRefusal(kMsgSecondVolumeSize)};
}

RefusalRows refusalsFromDisks() {
  return {requestRefusal(kMsgNoDisks), unsupportedRefusal(kMsgCreateSectorSize),
          absentRefusal(kMsgInvalidDiskId)};
}

EffectRows creationEffects() {
  return {
      {Fate::kComes,
       L"volume",
       keys::kName,
       L"itself",
       L"The volume {name} comes.",
       {},
       nullptr,
       nullptr,
       {keys::kRaidLevel, keys::kSize, keys::kDisks, keys::kArrayId}},
      {Fate::kChanges, L"array", keys::kArrayId, L"itself", L"It takes room in the array {arrayId}.",
       kInArray},
      {Fate::kComes,
       L"array",
       keys::kDisks,
       L"array",
       L"An array of {disks} comes.",
       kFromDisks,
       nullptr,
       nullptr,
       {nullptr, nullptr, keys::kDisks}},
      {Fate::kOverwritten, L"disk", keys::kDisks, L"itself",
       L"Everything on the disks of the new array is overwritten, but for what a volume takes over.",
       kFromDisks, nullptr, keys::kDiskId},
      {Fate::kChanges,
       L"disk",
       keys::kDiskId,
       L"itself",
       L"The data of the disk {diskId} become the volume's.",
       {keys::kDiskId}},
      {Fate::kOverwritten,
       L"disk",
       keys::kJournalingDriveId,
       L"itself",
       L"Everything on the disk {journalingDriveId} is overwritten.",
       {keys::kJournalingDriveId}},
  };
}

}  // namespace

RouteRow volumeCreationRow(const wchar_t* branch) {
  return {RouteId::kCreateVolume,
          L"createVolume",
          {L"volumes", L"create"},
          HttpMethod::kPost,
          branch,
          L"",
          L"Makes a volume, from disks in a new array, or in an array that is there.",
          L"Without a strip size the volume gets the usual one of its level. With diskId the data of that "
          L"disk become "
          L"the volume's, and the volume serves while they spread over the other disks.",
          Effect::kDestroys,
          Role::kAdminister,
          {schemas::kVolume},
          withPicture({creationRefusals(), nameRefusals(), refusalsInArray(), refusalsFromDisks(),
                       diskRefusals(), writeHoleRefusals()}),
          Judgement::kBodyThenQuery,
          {},
          creationFields(),
          {{L"VexVolumeCreate", L"VexVolumeCreateFromDisks"}},
          creationEffects(),
          {{WorkKind::kMigrate, keys::kName, {keys::kDiskId}}}};
}
