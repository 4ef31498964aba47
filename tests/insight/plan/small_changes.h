#ifndef MIRN_TESTS_INSIGHT_PLAN_SMALL_CHANGES_H
#define MIRN_TESTS_INSIGHT_PLAN_SMALL_CHANGES_H

#include <string>
#include <vector>

#include "plan/request_arguments.h"

namespace insight {

inline OperationField fieldCalled(const wchar_t* name, const wchar_t* refersTo = L"") {
  OperationField field;
  field.name = name;
  field.type = L"text";
  field.refersTo = refersTo;
  return field;
}

/// "change" a volume, by all arguments that a plan knows something of.
inline Operation changeOfVolume() {
  Operation operation;
  operation.id = L"change";
  operation.segments = {L"{volumeId}", L"change"};
  operation.argument = L"volumeId";
  operation.objectType = L"volume";
  OperationField size = fieldCalled(L"size");
  size.unit = L"MiB";
  size.candidates = CandidateSource{L"size", L"volumeId", {}};
  operation.fields = {
      fieldCalled(L"name"),           fieldCalled(L"raidLevel"),       size,
      fieldCalled(L"disks", L"disk"), fieldCalled(L"diskId", L"disk"), fieldCalled(L"arrayId", L"array")};
  return operation;
}

/// The same on any object of a type.
inline Operation changeOf(const wchar_t* type) {
  Operation operation = changeOfVolume();
  operation.segments = {L"{objectId}"};
  operation.argument = L"objectId";
  operation.objectType = type;
  return operation;
}

}  // namespace insight

#endif
