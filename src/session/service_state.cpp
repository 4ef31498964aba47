#include <algorithm>
#include <iterator>

#include "snapshot_reads.h"

// What a state means is spelled out for every state, so that the compiler names the places that a new one
// concerns. Numbers that are no state fall through to the end.

namespace {

/// What one object says of the whole; the worst word counts, and FAILED ends the search.
ServiceState verdictOf(const Volume& volume) {
  switch (volume.state()) {
    case VolumeState::FAILED:
    case VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK:
      return ServiceState::FAILED;
    case VolumeState::UNKNOWN:
    case VolumeState::DEGRADED:
      return ServiceState::WARNING;
    case VolumeState::NORMAL:
    case VolumeState::INITIALIZING:
    case VolumeState::REBUILDING:
    case VolumeState::VERIFYING:
    case VolumeState::VERIFYING_AND_FIXING:
    case VolumeState::GENERAL_MIGRATION:
    case VolumeState::LOCKED:
    case VolumeState::REBUILDING_ALTERNATE:
      return ServiceState::NORMAL;
  }
  return ServiceState::NORMAL;  // a number that is no state
}

/// An offline disk of an array counts as healthy here, and a failed one is a warning: its volume has the say.
ServiceState verdictOf(const EndDevice& device) {
  if (device.deviceType() != DeviceType::DISK) return ServiceState::NORMAL;
  const DiskUsage usage = device.disk().usage;
  switch (device.disk().state) {
    case DiskState::UNKNOWN:
    case DiskState::LOCKED:
      return ServiceState::NORMAL;
    case DiskState::OFFLINE:
    case DiskState::NORMAL:
      return usage == DiskUsage::UNKNOWN ? ServiceState::WARNING : ServiceState::NORMAL;
    case DiskState::FAILED:
      return usage == DiskUsage::UNKNOWN || usage == DiskUsage::PASS_THROUGH ? ServiceState::FAILED
                                                                             : ServiceState::WARNING;
    case DiskState::MISSING:
    case DiskState::SMART_EVENT_TRIGGERED:
    case DiskState::CONFIG_IS_UPREV:
    case DiskState::MANUAL_OFFLINE:
    case DiskState::INCOMPATIBLE:
    case DiskState::UNSUPPORTED:
      return ServiceState::WARNING;
  }
  return ServiceState::WARNING;  // a number that is no state
}

/// Adds the objects' verdicts to `state`.
template <class Object>
ServiceState judged(ServiceState state, const std::vector<Object>& objects) {
  for (const Object& object : objects) {
    const ServiceState verdict = verdictOf(object);
    if (verdict == ServiceState::FAILED) return verdict;
    if (verdict == ServiceState::WARNING) state = verdict;
  }
  return state;
}

bool isInProgress(const Volume& volume) {
  switch (volume.state()) {
    case VolumeState::REBUILDING:
    case VolumeState::INITIALIZING:
    case VolumeState::VERIFYING:
    case VolumeState::VERIFYING_AND_FIXING:
    case VolumeState::GENERAL_MIGRATION:
      return true;
    case VolumeState::UNKNOWN:
    case VolumeState::NORMAL:
    case VolumeState::DEGRADED:
    case VolumeState::FAILED:
    case VolumeState::LOCKED:
    case VolumeState::REBUILDING_ALTERNATE:  // reads "REBUILDING", and is no operation of its own
    case VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK:
      return false;
  }
  return false;  // a number that is no state
}

}  // namespace

std::wstring SnapshotReads::getServiceState() {
  const Picture now = picture();
  const ServiceState ofVolumes = judged(ServiceState::NORMAL, now->volumes);
  return toText(ofVolumes == ServiceState::FAILED ? ofVolumes : judged(ofVolumes, now->endDevices));
}

std::vector<Volume> SnapshotReads::getVolumesInProgress() {
  const Picture now = picture();
  std::vector<Volume> volumes;
  std::copy_if(now->volumes.begin(), now->volumes.end(), std::back_inserter(volumes), isInProgress);
  return volumes;
}
