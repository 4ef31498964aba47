#ifndef MIRN_INSIGHT_HEALTH_CAUSE_KINDS_H
#define MIRN_INSIGHT_HEALTH_CAUSE_KINDS_H

#include <string>
#include <utility>
#include <vector>

#include "health/severity.h"
#include "view/object_ref.h"

namespace insight {

/// What can be wrong with the machine itself.
enum class CauseKind {
  kVolumeFailed,
  kVolumeDegraded,
  kVolumeLocked,
  kVolumeUnknown,
  kVerifyErrors,
  kJournalingDriveLost,
  kDiskFailed,
  kDiskMissing,
  kDiskSmart,
  kDiskOffline,
  kDiskLocked,
  kDiskUprev,
  kDiskUnsupported,
  kNoSpareFits,
  kPictureOld,
};

/// An operation that may help. An argument that reads "{id}" is the object's id.
struct StepRow {
  std::string operation;
  std::vector<std::pair<std::string, std::wstring>> arguments = {};
};

/// What is told of one kind. Where its severity depends on the object, this is the lesser one.
struct CauseRow {
  CauseKind kind;
  std::string id;
  Severity severity;
  std::string sentence;  ///< "{name}" is the object's name.
  std::vector<StepRow> steps = {};
};

/// One row a kind, in the order of the kinds.
const std::vector<CauseRow>& causeRows();
const CauseRow& causeRow(CauseKind kind);

}  // namespace insight

#endif
