#include "shared_rows.h"

#include <algorithm>

#include "enumerations.h"
#include "messages.h"
#include "request_keys.h"
#include "service_exceptions.h"
#include "session_messages.h"
#include "text.h"

using ovra::request_validator::FieldPresence;
using ovra::request_validator::FieldType;

namespace {

template <class Value>
std::vector<std::wstring> wordsOf(std::initializer_list<Value> values) {
  std::vector<std::wstring> words;
  for (const Value value : values) words.push_back(toText(value));
  return words;
}

std::vector<std::wstring> stripSizeWords() {
  std::vector<std::wstring> words;
  for (const auto& pair : stripSizeBits().left) {
    if (pair.first != StripSize::SIZE_UNKNOWN) words.push_back(toText(pair.first));
  }
  return words;
}

constexpr wchar_t kDiskType[] = L"disk";

}  // namespace

FieldRow requiredField(const wchar_t* name, const wchar_t* help) {
  return {name, FieldType::kString, FieldPresence::kRequired, help};
}

FieldRow optionalField(const wchar_t* name, const wchar_t* help) {
  return {name, FieldType::kString, FieldPresence::kOptional, help};
}

Candidates freeDisks(const wchar_t* of) {
  return {kDiskType, of, wordsOf({DiskUsage::PASS_THROUGH, DiskUsage::SPARE})};
}

FieldRow stateField(const wchar_t* help) {
  FieldRow field = requiredField(keys::kState, help);
  field.words = wordsOf({EnableState::ENABLED, EnableState::DISABLED});
  return field;
}

FieldRow diskField(const wchar_t* name, const wchar_t* help, const wchar_t* controllerOf) {
  FieldRow field = requiredField(name, help);
  field.refersTo = kDiskType;
  field.candidates = freeDisks(controllerOf);
  return field;
}

FieldRow diskListField(FieldPresence presence, const wchar_t* help, const wchar_t* controllerOf) {
  FieldRow field = diskField(keys::kDisks, help, controllerOf);
  field.type = FieldType::kArray;
  field.presence = presence;
  return field;
}

FieldRow nameField() {
  return requiredField(keys::kName,
                       L"At most 16 printable ASCII characters, no backslash, no white space in front.");
}

FieldRow sizeField(const wchar_t* help, const wchar_t* of) {
  FieldRow field = requiredField(keys::kSize, help);
  field.unit = L"MiB";
  field.candidates = {L"size", of};
  return field;
}

FieldRow levelField() {
  FieldRow field = requiredField(keys::kRaidLevel, L"How data and redundancy lie on the disks.");
  field.words = wordsOf({RaidLevel::RAID_0, RaidLevel::RAID_1, RaidLevel::RAID_5, RaidLevel::RAID_10});
  field.candidates = {L"level"};
  return field;
}

FieldRow stripField() {
  FieldRow field = optionalField(keys::kStripSize, L"The piece that lies on one disk; not for RAID_1.");
  field.words = stripSizeWords();
  field.candidates = {L"strip", keys::kRaidLevel};
  return field;
}

FieldRow writeHoleField(FieldPresence presence) {
  FieldRow field = requiredField(keys::kRwhPolicy, L"What closes the write hole of a RAID_5 volume.");
  field.presence = presence;
  field.words = wordsOf({RwhPolicy::RWH_OFF, RwhPolicy::RWH_DISTRIBUTED, RwhPolicy::RWH_JOURNALING_DRIVE});
  return field;
}

FieldRow journalingDriveField() {
  FieldRow field = optionalField(keys::kJournalingDriveId,
                                 L"The disk that holds the journal; needed with RWH_JOURNALING_DRIVE.");
  field.refersTo = kDiskType;
  field.candidates = freeDisks(nullptr);
  return field;
}

FieldRow onlyWhen(FieldRow field, Condition condition) {
  field.when = condition;
  return field;
}

RefusalRow requestRefusal(const wchar_t* words) {
  return {kErrorInvalidParameter, words, RefusalKind::kRequest};
}

RefusalRow absentRefusal(const wchar_t* words) { return {kErrorObjectNotFound, words, RefusalKind::kAbsent}; }

RefusalRow unsupportedRefusal(const wchar_t* words) {
  return {kErrorNotSupported, words, RefusalKind::kUnsupported};
}

RefusalRows nameRefusals() {
  return {requestRefusal(kMsgNameTooLong),
          requestRefusal(kMsgNameStartsWithSpace),
          requestRefusal(kMsgNameForbiddenCharacter),
          {kErrorInvalidParameter, kMsgNameInUse, RefusalKind::kState}};
}

RefusalRows diskRefusals() {
  return {requestRefusal(kMsgInvalidDiskId), absentRefusal(kMsgDiskNotFound),
          requestRefusal(kMsgDiskNotFound)};  // the latter of a device that is no disk
}

RefusalRows writeHoleRefusals() {
  return {requestRefusal(kMsgInvalidRwhPolicy),
          requestRefusal(kMsgJournalingDriveMissing),
          requestRefusal(kMsgInvalidJournalingDriveId),
          absentRefusal(kMsgJournalingDriveNotFound),
          absentRefusal(kMsgDiskNotFound),
          requestRefusal(kMsgDiskNotFound),
          unsupportedRefusal(kMsgJournalingDriveSectorSize)};
}

RefusalRows pictureRefusals() {
  return {{kErrorOperationFailed, utf8ToWide(kMsgSessionTimeout), RefusalKind::kOffline}};
}

RefusalRows withPicture(std::initializer_list<RefusalRows> groups) {
  RefusalRows all;
  for (const RefusalRows& group : groups) {
    for (const RefusalRow& row : group) {
      const bool known = std::any_of(all.begin(), all.end(), [&](const RefusalRow& other) {
        return other.errorId == row.errorId && other.words == row.words;
      });
      if (!known) all.push_back(row);
    }
  }
  const RefusalRows last = pictureRefusals();
  all.insert(all.end(), last.begin(), last.end());
  return all;
}
