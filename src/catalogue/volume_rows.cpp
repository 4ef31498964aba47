#include "branches.h"
#include "enumerations.h"
#include "http_method.h"
#include "messages.h"
#include "request_keys.h"
#include "request_words.h"
#include "schema_names.h"
#include "service_exceptions.h"
#include "shared_rows.h"
#include "volume_creation_rows.h"

using ovra::request_validator::FieldPresence;
using ovra::request_validator::FieldType;

namespace {

constexpr wchar_t kBranch[] = L"volumes";

RefusalRows unknownVolume() { return {absentRefusal(kMsgVolumeNotFound)}; }

RefusalRows rebuildRefusals() {
  return {unsupportedRefusal(kMsgRebuildX8),
          unsupportedRefusal(kMsgRebuildSectorSize),
          {kErrorNotSupported, kMsgRebuildNotDegraded, RefusalKind::kState}};
}

RefusalRows levelRefusals() {
  return {
      requestRefusal(kMsgInvalidRaidLevel),
      {kErrorInvalidRaidLevel, kMsgX8NeedsRaid0, RefusalKind::kRequest},
      {kErrorDiskInvalidState, kMsgDiskNotUsable, RefusalKind::kState},
      unsupportedRefusal(kMsgAddDiskSectorSize),
      {kErrorInvalidRaidLevel, kMsgStripSizeOfRaid1, RefusalKind::kRequest},
      {kErrorInternal, kMsgNoDefaultStripSize, RefusalKind::kFailure},
      requestRefusal(kMsgInvalidStripSize),
  };
}

FieldRow verifyActionField() {
  FieldRow field = requiredField(keys::kAction, L"Starts the verification, or stops it.");
  field.words = {request_words::kStart, request_words::kCancel};
  return field;
}

/// The validator takes it with any action; START does not go without it.
FieldRow repairField() {
  return {keys::kRepair, FieldType::kBoolean, FieldPresence::kOptional,
          L"Whether errors are mended; needed with START."};
}

FieldRow cachePolicyField() {
  FieldRow field = requiredField(keys::kCachePolicy, L"What the volume's cache holds back.");
  field.words = {toText(CachePolicy::OFF), toText(CachePolicy::WRITE_THROUGH),
                 toText(CachePolicy::WRITE_BACK)};
  return field;
}

FieldRow levelOfVolumeField() {
  FieldRow field = levelField();
  field.candidates.of = keys::kVolumeId;
  return field;
}

constexpr EffectRow volumeEffect(Fate fate, const wchar_t* text, Condition when = {},
                                 const Shape& becomes = {}) {
  return {fate, L"volume", keys::kVolumeId, L"itself", text, when, nullptr, nullptr, becomes};
}

/// On those objects around the volume that stand so, see `EffectRow`.
constexpr EffectRow aroundVolume(Fate fate, const wchar_t* type, const wchar_t* relation, const wchar_t* text,
                                 const wchar_t* where = nullptr) {
  return {fate, type, keys::kVolumeId, relation, text, {}, where};
}

/// A missing disk is known for as long only as something stands on it.
constexpr EffectRow journalForgotten() {
  return aroundVolume(Fate::kGoes, L"disk", L"journal",
                      L"The missing disk that held its journal is forgotten.", L"forgotten");
}

constexpr EffectRow journalFreed() {
  return aroundVolume(Fate::kChanges, L"disk", L"journal", L"The disk that held its journal becomes free.",
                      L"unshared");
}

RouteRow markNormalRow() {
  return {
      RouteId::kMarkVolumeNormal,
      L"markVolumeNormal",
      {L"volumes", L"mark-normal"},
      HttpMethod::kPut,
      kBranch,
      L"{volumeId}/marknormal",
      L"Tries a failed volume again.",
      L"The volume serves again from disks that came back. What it held may be wrong: check it before use.",
      Effect::kDestroys,
      Role::kAdminister,
      {schemas::kVolumeStateChange},
      withPicture({unknownVolume()}),
      Judgement::kNoBodyThenQuery,
      {},
      {},
      {{L"VexVolumeMarkAsNormal"}, kErrorVolumeInvalidState},
      {volumeEffect(Fate::kChanges, L"The volume {volumeId} counts as sound, whatever its data are."),
       aroundVolume(Fate::kChanges, L"disk", L"disks", L"So do the failed disks of its array.", L"lost")}};
}

RouteRow rebuildRow() {
  return {RouteId::kRebuildVolume,
          L"rebuildVolume",
          {L"volumes", L"rebuild"},
          HttpMethod::kPut,
          kBranch,
          L"{volumeId}/rebuild",
          L"Rebuilds a degraded volume onto a disk.",
          L"The disk takes the place of the lost one; everything on it is overwritten. The volume serves "
          L"meanwhile.",
          Effect::kDestroys,
          Role::kOperate,
          {schemas::kVolumeStateChange},
          withPicture({unknownVolume(), diskRefusals(), rebuildRefusals()}),
          Judgement::kBodyThenQuery,
          {},
          {diskField(keys::kDiskId, L"The disk that takes the place of the lost one.", keys::kVolumeId)},
          {{L"VexVolumeRebuild"}, kErrorVolumeInvalidState},
          {volumeEffect(Fate::kChanges, L"The volume {volumeId} is rebuilt onto the disk {diskId}."),
           {Fate::kChanges,
            L"volume",
            keys::kVolumeId,
            L"volumes",
            L"The other volume of its array lies on the disk from then on, too.",
            {},
            nullptr,
            keys::kVolumeId},
           aroundVolume(Fate::kChanges, L"disk", L"disks", L"The lost disk leaves the array.", L"lost"),
           aroundVolume(Fate::kGoes, L"disk", L"disks", L"The missing disk is forgotten.", L"missing"),
           {Fate::kOverwritten, L"disk", keys::kDiskId, L"itself",
            L"Everything on the disk {diskId} is overwritten."}},
          {{WorkKind::kRebuild, keys::kVolumeId}}};
}

RouteRow levelRow() {
  return {RouteId::kChangeVolumeLevel,
          L"changeVolumeLevel",
          {L"volumes", L"change-level"},
          HttpMethod::kPut,
          kBranch,
          L"{volumeId}/level",
          L"Changes the level, the strip size or the disks of a volume.",
          L"The volume migrates, and serves meanwhile. What is on further disks is overwritten.",
          Effect::kDestroys,
          Role::kAdminister,
          {schemas::kVolumeChange},
          withPicture({unknownVolume(), levelRefusals(), diskRefusals()}),
          Judgement::kBodyThenQuery,
          {},
          {stripField(), levelOfVolumeField(),
           diskListField(FieldPresence::kOptional, L"The ids of further disks.", keys::kVolumeId)},
          {{L"VexRaidLevelModify"}},
          {volumeEffect(Fate::kChanges, L"The volume {volumeId} migrates to {raidLevel}.", {},
                        {keys::kRaidLevel, nullptr, keys::kDisks, nullptr, true}),
           aroundVolume(Fate::kChanges, L"array", L"array", L"Its array gives the room."),
           {Fate::kChanges,
            L"array",
            keys::kVolumeId,
            L"array",
            L"Its array grows by {disks}.",
            {keys::kDisks},
            nullptr,
            nullptr,
            {nullptr, nullptr, keys::kDisks}},
           {Fate::kOverwritten,
            L"disk",
            keys::kDisks,
            L"itself",
            L"Everything on {disks} is overwritten.",
            {keys::kDisks}}},
          {{WorkKind::kMigrate, keys::kVolumeId}}};
}

RouteRow initializeRow() {
  return {RouteId::kInitializeVolume,
          L"initializeVolume",
          {L"volumes", L"initialize"},
          HttpMethod::kPut,
          kBranch,
          L"{volumeId}/init",
          L"Initialises a volume.",
          L"Redundancy is computed anew from what the disks hold. The volume serves meanwhile.",
          Effect::kDestroys,
          Role::kAdminister,
          {schemas::kVolumeStateChange},
          withPicture({unknownVolume()}),
          Judgement::kNoBodyThenQuery,
          {},
          {},
          {{L"VexVolumeInitialize"}, kErrorVolumeInvalidState},
          {volumeEffect(Fate::kOverwritten, L"The redundancy of the volume {volumeId} is written anew.")},
          {{WorkKind::kInitialize, keys::kVolumeId}}};
}

RouteRow verifyRow() {
  return {
      RouteId::kVerifyVolume,
      L"verifyVolume",
      {L"volumes", L"verify"},
      HttpMethod::kPut,
      kBranch,
      L"{volumeId}/verify",
      L"Verifies a volume, or stops that.",
      L"Data and redundancy are read and compared, and errors counted; with repair they are mended, too.",
      Effect::kChanges,
      Role::kOperate,
      {schemas::kVolumeStateChange},
      withPicture({unknownVolume(), {requestRefusal(kMsgRepairMissing), requestRefusal(kMsgInvalidAction)}}),
      Judgement::kBodyThenQuery,
      {},
      {verifyActionField(), repairField()},
      {{L"VexVolumeVerify", L"VexVolumeCancelVerify"}, kErrorVolumeInvalidState},
      {volumeEffect(Fate::kChanges, L"The volume {volumeId} is verified.",
                    {keys::kAction, request_words::kStart}),
       volumeEffect(Fate::kChanges, L"The verification of the volume {volumeId} stops.",
                    {keys::kAction, request_words::kCancel})},
      {{WorkKind::kVerify, keys::kVolumeId, {keys::kAction, request_words::kStart}}}};
}

RouteRow resizeRow() {
  return {
      RouteId::kResizeVolume,
      L"resizeVolume",
      {L"volumes", L"resize"},
      HttpMethod::kPut,
      kBranch,
      L"{volumeId}/size",
      L"Lets a volume grow.",
      L"Into the free room of its array. The volume serves meanwhile.",
      Effect::kChanges,
      Role::kAdminister,
      {schemas::kVolumeChange},
      withPicture({unknownVolume(), {requestRefusal(kMsgInvalidSize)}}),
      Judgement::kBodyThenQuery,
      {},
      {sizeField(L"Its new size; \"0\" for all that is free.", keys::kVolumeId)},
      {{L"VexExpandVolume"}},
      {volumeEffect(Fate::kChanges, L"The volume {volumeId} grows to {size}.", {}, {nullptr, keys::kSize}),
       aroundVolume(Fate::kChanges, L"array", L"array", L"Its array gives the room.")},
      {{WorkKind::kMigrate, keys::kVolumeId}}};
}

RouteRow cachePolicyRow() {
  return {
      RouteId::kSetVolumeCachePolicy,
      L"setVolumeCachePolicy",
      {L"volumes", L"set-cache-policy"},
      HttpMethod::kPut,
      kBranch,
      L"{volumeId}/cachepolicy",
      L"Sets the cache policy of a volume.",
      L"With WRITE_BACK data are reported as written before they are on the disks.",
      Effect::kChanges,
      Role::kAdminister,
      {schemas::kVolumeChange},
      withPicture({unknownVolume(),
                   {absentRefusal(kMsgControllerNotFound), unsupportedRefusal(kMsgNoCachePolicy),
                    requestRefusal(kMsgInvalidCachePolicy)}}),
      Judgement::kBodyThenQuery,
      {},
      {cachePolicyField()},
      {{L"VexVolumeSetCachePolicy"}},
      {volumeEffect(Fate::kChanges, L"The cache policy of the volume {volumeId} becomes {cachePolicy}.")}};
}

RouteRow renameRow() {
  return {RouteId::kRenameVolume,
          L"renameVolume",
          {L"volumes", L"rename"},
          HttpMethod::kPut,
          kBranch,
          L"{volumeId}/name",
          L"Renames a volume.",
          L"No other volume may have the name. The id stays.",
          Effect::kChanges,
          Role::kOperate,
          {schemas::kVolumeName},
          withPicture({unknownVolume(), nameRefusals()}),
          Judgement::kBodyThenQuery,
          {},
          {nameField()},
          {{L"VexVolumeRename"}},
          {volumeEffect(Fate::kChanges, L"The volume {volumeId} is called {name}.")}};
}

RouteRow deleteRow() {
  return {RouteId::kDeleteVolume,
          L"deleteVolume",
          {L"volumes", L"delete"},
          HttpMethod::kDelete,
          kBranch,
          L"{volumeId}",
          L"Deletes a volume.",
          L"All its data are lost. With the last volume of an array the array goes, too.",
          Effect::kDestroys,
          Role::kAdminister,
          {},
          withPicture({unknownVolume()}),
          Judgement::kQuery,
          {},
          {},
          {{L"VexVolumeDelete"}, kErrorVolumeInvalidState},
          {volumeEffect(Fate::kGoes, L"The volume {volumeId} goes, with all its data."),
           aroundVolume(Fate::kGoes, L"array", L"array", L"Its array goes, since it holds no other volume.",
                        L"emptied"),
           aroundVolume(Fate::kChanges, L"array", L"array",
                        L"Its array wins the room, since it holds another volume.", L"kept"),
           aroundVolume(Fate::kChanges, L"disk", L"disks", L"The disks become free, since their array goes.",
                        L"emptied"),
           aroundVolume(Fate::kGoes, L"disk", L"disks", L"Its missing disks are forgotten with the array.",
                        L"forgotten"),
           journalFreed(), journalForgotten()}};
}

RouteRow writeHoleRow() {
  return {
      RouteId::kSetVolumeWriteHolePolicy,
      L"setVolumeWriteHolePolicy",
      {L"volumes", L"set-write-hole-policy"},
      HttpMethod::kPut,
      kBranch,
      L"{volumeId}/rwh",
      L"Sets what closes the write hole of a volume.",
      L"The write hole is the moment at which data are new and redundancy is old. A journal closes it: on "
      L"the "
      L"members themselves, or on a disk of its own, which is overwritten.",
      Effect::kDestroys,
      Role::kAdminister,
      {schemas::kVolumeChange},
      withPicture({unknownVolume(),
                   writeHoleRefusals(),
                   {{kErrorInvalidRaidLevel, kMsgRwhNeedsRaid5, RefusalKind::kRequest}}}),
      Judgement::kBodyThenQuery,
      {},
      {writeHoleField(FieldPresence::kRequired), journalingDriveField()},
      {{L"VexVolumeSetRwhPolicy"}},
      {volumeEffect(Fate::kChanges, L"The write-hole policy of the volume {volumeId} becomes {rwhPolicy}."),
       journalFreed(),
       journalForgotten(),
       {Fate::kOverwritten,
        L"disk",
        keys::kJournalingDriveId,
        L"itself",
        L"Everything on the disk {journalingDriveId} is overwritten.",
        {keys::kJournalingDriveId}}}};
}

}  // namespace

RouteRows volumeRows() {
  return {
      {RouteId::kListVolumes,
       L"listVolumes",
       {L"volumes", L"list"},
       HttpMethod::kGet,
       kBranch,
       L"",
       L"Lists all volumes.",
       L"With their state, their work and how far it is.",
       Effect::kRead,
       Role::kObserve,
       {schemas::kVolume, true},
       withPicture()},
      markNormalRow(),
      rebuildRow(),
      levelRow(),
      initializeRow(),
      verifyRow(),
      resizeRow(),
      cachePolicyRow(),
      renameRow(),
      deleteRow(),
      volumeCreationRow(kBranch),
      writeHoleRow(),
  };
}
