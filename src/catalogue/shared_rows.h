#ifndef MIRN_CATALOGUE_SHARED_ROWS_H
#define MIRN_CATALOGUE_SHARED_ROWS_H

#include <initializer_list>

#include "route_row.h"

/// What several rows have in common.

// Fields.
FieldRow requiredField(const wchar_t* name, const wchar_t* help);
FieldRow optionalField(const wchar_t* name, const wchar_t* help);
/// The disks that a volume may take in. `of` is the argument whose object's controller they must be on.
Candidates freeDisks(const wchar_t* of);
/// "ENABLED" or "DISABLED".
FieldRow stateField(const wchar_t* help);
FieldRow diskField(const wchar_t* name, const wchar_t* help, const wchar_t* controllerOf);
FieldRow diskListField(ovra::request_validator::FieldPresence presence, const wchar_t* help,
                       const wchar_t* controllerOf);
FieldRow nameField();
FieldRow sizeField(const wchar_t* help, const wchar_t* of);
FieldRow levelField();
FieldRow stripField();
FieldRow writeHoleField(ovra::request_validator::FieldPresence presence);
FieldRow journalingDriveField();

/// The field, allowed under a condition only.
FieldRow onlyWhen(FieldRow field, Condition condition);

// Refusals.
RefusalRow requestRefusal(const wchar_t* words);
RefusalRow absentRefusal(const wchar_t* words);
RefusalRow unsupportedRefusal(const wchar_t* words);
/// A rule that a name for a volume breaks.
RefusalRows nameRefusals();
/// A disk that a body names by its id.
RefusalRows diskRefusals();
/// A write-hole policy, and the drive that goes with it.
RefusalRows writeHoleRefusals();
/// The picture of the machine cannot be had in time.
RefusalRows pictureRefusals();

/// The groups and the pictures' refusals as one list.
RefusalRows withPicture(std::initializer_list<RefusalRows> groups = {});

#endif
