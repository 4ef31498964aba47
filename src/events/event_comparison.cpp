#include "event_comparison.h"

#include <boost/optional.hpp>
#include <memory>

#include "matched_lists.h"

namespace {

// What a change of state tells. Every state is spelled out, so that the compiler names the places that a new
// one concerns. To enter a number that is no state tells nothing.

template <class Type>
struct Change {
  Type type;
  EventSeverity severity;
};

using VolumeChange = Change<VolumeEventType>;
using DiskChange = Change<DiskEventType>;

/// A volume that is normal again: what it was before tells what has ended.
VolumeEventType backToNormal(VolumeState before) {
  switch (before) {
    case VolumeState::INITIALIZING:
      return VolumeEventType::VOLUME_INITIALIZE_COMPLETE;
    case VolumeState::REBUILDING:
    case VolumeState::REBUILDING_ALTERNATE:
      return VolumeEventType::VOLUME_REBUILD_COMPLETE;
    case VolumeState::VERIFYING:
      return VolumeEventType::VOLUME_VERIFY_STOP;
    case VolumeState::VERIFYING_AND_FIXING:
      return VolumeEventType::VOLUME_VERIFY_AND_FIX_STOP;
    case VolumeState::GENERAL_MIGRATION:
      return VolumeEventType::VOLUME_MIGRATION_COMPLETE;
    case VolumeState::LOCKED:
      return VolumeEventType::VOLUME_UNLOCKED;
    case VolumeState::UNKNOWN:
    case VolumeState::NORMAL:
    case VolumeState::DEGRADED:
    case VolumeState::FAILED:
    case VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK:
      return VolumeEventType::VOLUME_NORMAL;
  }
  return VolumeEventType::VOLUME_NORMAL;  // from a number that is no state
}

boost::optional<VolumeChange> changeOf(VolumeState before, VolumeState after) {
  if (before == after) return boost::none;
  switch (after) {
    case VolumeState::NORMAL:
      return VolumeChange{backToNormal(before), EventSeverity::INFO};
    case VolumeState::DEGRADED:
      return VolumeChange{VolumeEventType::VOLUME_DEGRADED, EventSeverity::WARNING};
    case VolumeState::FAILED:
      return VolumeChange{VolumeEventType::VOLUME_FAILED, EventSeverity::ERROR};
    case VolumeState::INITIALIZING:
      return VolumeChange{VolumeEventType::VOLUME_INITIALIZE_STARTED, EventSeverity::INFO};
    case VolumeState::REBUILDING:
    case VolumeState::REBUILDING_ALTERNATE:
      return VolumeChange{VolumeEventType::VOLUME_REBUILD_STARTED, EventSeverity::INFO};
    case VolumeState::VERIFYING:
      return VolumeChange{VolumeEventType::VOLUME_VERIFY_STARTED, EventSeverity::INFO};
    case VolumeState::VERIFYING_AND_FIXING:
      return VolumeChange{VolumeEventType::VOLUME_VERIFY_AND_FIX_STARTED, EventSeverity::INFO};
    case VolumeState::GENERAL_MIGRATION:
      return VolumeChange{VolumeEventType::VOLUME_MIGRATION_STARTED, EventSeverity::INFO};
    case VolumeState::LOCKED:
      return VolumeChange{VolumeEventType::VOLUME_LOCKED, EventSeverity::INFO};
    case VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK:
      return VolumeChange{VolumeEventType::VOLUME_MASTER_DISK_FAILED, EventSeverity::ERROR};
    case VolumeState::UNKNOWN:
      return boost::none;
  }
  return boost::none;
}

boost::optional<DiskChange> leaving(DiskState before) {
  switch (before) {
    case DiskState::LOCKED:
      return DiskChange{DiskEventType::DISK_UNLOCKED, EventSeverity::INFO};
    case DiskState::UNKNOWN:
    case DiskState::OFFLINE:
    case DiskState::MISSING:
    case DiskState::FAILED:
    case DiskState::SMART_EVENT_TRIGGERED:
    case DiskState::CONFIG_IS_UPREV:
    case DiskState::NORMAL:
    case DiskState::MANUAL_OFFLINE:
    case DiskState::INCOMPATIBLE:
    case DiskState::UNSUPPORTED:
      return boost::none;
  }
  return boost::none;
}

/// A missing disk is no more than information: whether it was taken out or broke is not known.
boost::optional<DiskChange> entering(DiskState after) {
  switch (after) {
    case DiskState::MISSING:
      return DiskChange{DiskEventType::DISK_MISSING, EventSeverity::INFO};
    case DiskState::SMART_EVENT_TRIGGERED:
      return DiskChange{DiskEventType::DISK_SMART, EventSeverity::WARNING};
    case DiskState::FAILED:
      return DiskChange{DiskEventType::DISK_FAILED, EventSeverity::ERROR};
    case DiskState::UNKNOWN:
    case DiskState::OFFLINE:
    case DiskState::CONFIG_IS_UPREV:
    case DiskState::NORMAL:
    case DiskState::LOCKED:
    case DiskState::MANUAL_OFFLINE:
    case DiskState::INCOMPATIBLE:
    case DiskState::UNSUPPORTED:
      return boost::none;
  }
  return boost::none;
}

/// One event at most: what was left is told ahead of what was entered.
boost::optional<DiskChange> changeOf(DiskState before, DiskState after) {
  if (before == after) return boost::none;
  const boost::optional<DiskChange> left = leaving(before);
  return left ? left : entering(after);
}

/// A device that is already missing when it is first seen is no addition.
bool isAddition(DiskState state) {
  switch (state) {
    case DiskState::MISSING:
      return false;
    case DiskState::UNKNOWN:
    case DiskState::OFFLINE:
    case DiskState::FAILED:
    case DiskState::SMART_EVENT_TRIGGERED:
    case DiskState::CONFIG_IS_UPREV:
    case DiskState::NORMAL:
    case DiskState::LOCKED:
    case DiskState::MANUAL_OFFLINE:
    case DiskState::INCOMPATIBLE:
    case DiskState::UNSUPPORTED:
      return true;
  }
  return true;  // a number that is no state
}

class Recorder {
 public:
  explicit Recorder(EventJournal& journal) : m_journal(journal) {}

  void add(const Volume& volume, VolumeEventType type, const VolumeStates& states,
           EventSeverity severity = EventSeverity::INFO) {
    m_journal.add(std::make_shared<mirn_events::volume_event>(severity, type, volume, states));
  }

  void add(const EndDevice& device, DiskEventType type, EventSeverity severity = EventSeverity::INFO) {
    m_journal.add(std::make_shared<mirn_events::disk_event>(severity, type, device));
  }

  void addChange(const Volume& before, const Volume& after) {
    if (const auto change = changeOf(before.state(), after.state()))
      add(after, change->type, {before.state(), after.state()}, change->severity);
  }

  void addChange(const EndDevice& before, const EndDevice& after) {
    const auto change = changeOf(before.disk().state, after.disk().state);
    if (change) add(after, change->type, change->severity);
  }

 private:
  EventJournal& m_journal;
};

/// An array member whose disk was never known goes without an event.
bool isRemovalWorthAnEvent(const EndDevice& device) {
  return device.disk().type != DiskType::UNKNOWN || device.disk().usage != DiskUsage::ARRAY_MEMBER;
}

}  // namespace

void compareVolumes(const std::vector<Volume>& oldVolumes, const std::vector<Volume>& newVolumes,
                    EventJournal& journal) {
  const MatchedLists matched(oldVolumes, newVolumes);
  Recorder recorder(journal);
  for (std::size_t i = 0; i < oldVolumes.size(); ++i) {
    const Volume& volume = oldVolumes[i];
    if (matched.isGone(i)) {
      recorder.add(volume, VolumeEventType::VOLUME_DELETED, {volume.state(), boost::none});
    }
  }
  for (std::size_t i = 0; i < newVolumes.size(); ++i) {
    const Volume& volume = newVolumes[i];
    if (const Volume* before = matched.before(i)) {
      recorder.addChange(*before, volume);
    } else {
      recorder.add(volume, VolumeEventType::VOLUME_ADDED, {boost::none, volume.state()});
    }
  }
}

void compareEndDevices(const std::vector<EndDevice>& oldDevices, const std::vector<EndDevice>& newDevices,
                       EventJournal& journal) {
  const MatchedLists matched(oldDevices, newDevices);
  Recorder recorder(journal);
  for (std::size_t i = 0; i < oldDevices.size(); ++i) {
    const EndDevice& device = oldDevices[i];
    if (matched.isGone(i) && isRemovalWorthAnEvent(device)) {
      recorder.add(device, DiskEventType::DISK_REMOVED);
    }
  }
  for (std::size_t i = 0; i < newDevices.size(); ++i) {
    const EndDevice& device = newDevices[i];
    if (const EndDevice* before = matched.before(i)) {
      recorder.addChange(*before, device);
    } else if (isAddition(device.disk().state)) {
      recorder.add(device, DiskEventType::DISK_ADDED);
    }
  }
}
