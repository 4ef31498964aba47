#include "health/cause_kinds.h"

namespace insight {

namespace {

StepRow onVolume(const char* operation) { return {operation, {{"volumeId", L"{id}"}}}; }

StepRow onDisk(const char* operation) { return {operation, {{"diskId", L"{id}"}}}; }

StepRow lookAgain() { return {"rescan"}; }

}  // namespace

const std::vector<CauseRow>& causeRows() {
  static const std::vector<CauseRow> kRows{
      {CauseKind::kVolumeFailed,
       "volume-failed",
       Severity::kCritical,
       "Volume {name} has failed: it has lost more disks than it can do without.",
       {lookAgain(), onVolume("markVolumeNormal")}},
      {CauseKind::kVolumeDegraded,
       "volume-degraded",
       Severity::kWarning,
       "Volume {name} lacks redundancy until it has been rebuilt.",
       {onVolume("rebuildVolume")}},
      {CauseKind::kVolumeLocked,
       "volume-locked",
       Severity::kWarning,
       "Volume {name} cannot be used while its disks are locked.",
       {lookAgain()}},
      {CauseKind::kVolumeUnknown,
       "volume-unknown",
       Severity::kUnknown,
       "The state of volume {name} is unknown.",
       {lookAgain()}},
      {CauseKind::kVerifyErrors,
       "verify-errors",
       Severity::kWarning,
       "Verification found errors on volume {name}.",
       {{"verifyVolume", {{"volumeId", L"{id}"}, {"action", L"START"}, {"repair", L"true"}}}}},
      {CauseKind::kJournalingDriveLost,
       "journaling-drive-lost",
       Severity::kWarning,
       "Volume {name} goes on without its journal, whose drive is lost.",
       {onVolume("setVolumeWriteHolePolicy")}},
      {CauseKind::kDiskFailed,
       "disk-failed",
       Severity::kWarning,
       "Disk {name} has failed.",
       {onDisk("markDiskNormal")}},
      {CauseKind::kDiskMissing, "disk-missing", Severity::kWarning, "Disk {name} is missing.", {lookAgain()}},
      {CauseKind::kDiskSmart,
       "disk-smart",
       Severity::kWarning,
       "Disk {name} reports that it may fail soon.",
       {onDisk("resetDiskSmart")}},
      {CauseKind::kDiskOffline,
       "disk-offline",
       Severity::kInfo,
       "Disk {name} is offline.",
       {onDisk("markDiskNormal")}},
      {CauseKind::kDiskLocked, "disk-locked", Severity::kInfo, "Disk {name} is locked.", {lookAgain()}},
      {CauseKind::kDiskUprev, "disk-uprev", Severity::kWarning,
       "Disk {name} was set up by a later version, and is left alone."},
      {CauseKind::kDiskUnsupported,
       "disk-unsupported",
       Severity::kWarning,
       "Disk {name} is of a kind that is not supported.",
       {onDisk("removeDisk")}},
      {CauseKind::kNoSpareFits,
       "no-spare-fits",
       Severity::kInfo,
       "No spare can take over from a disk of array {name}.",
       {{"setDiskSpare", {{"action", L"MARK"}}}}},
      {CauseKind::kPictureOld,
       "picture-old",
       Severity::kUnknown,
       "What is known of the machine is out of date.",
       {lookAgain()}},
  };
  return kRows;
}

const CauseRow& causeRow(CauseKind kind) { return causeRows().at(static_cast<std::size_t>(kind)); }

}  // namespace insight
