#include "event_comparison.h"

#include <algorithm>
#include <boost/optional.hpp>
#include <iterator>
#include <memory>
#include <string_view>
#include <unordered_map>

namespace {

/// Finds the first object of a list with an id. Refers to the list.
template <class Object>
class IdIndex {
 public:
  explicit IdIndex(const std::vector<Object>& objects) {
    m_first.reserve(objects.size());
    for (const auto& object : objects) m_first.emplace(object.id(), &object);
  }

  /// Null when the list has none.
  const Object* find(const std::wstring& id) const {
    const auto found = m_first.find(id);
    return found == m_first.end() ? nullptr : found->second;
  }

 private:
  std::unordered_map<std::wstring_view, const Object*> m_first;
};

constexpr boost::none_t kAny = boost::none;

/// The first row that fits a change of state tells the event.
struct VolumeChange {
  VolumeState to;
  boost::optional<VolumeState> from;
  VolumeEventType type;
  EventSeverity severity;
};

const VolumeChange kVolumeChanges[] = {
    {VolumeState::NORMAL, VolumeState::INITIALIZING, VolumeEventType::VOLUME_INITIALIZE_COMPLETE,
     EventSeverity::INFO},
    {VolumeState::NORMAL, VolumeState::REBUILDING, VolumeEventType::VOLUME_REBUILD_COMPLETE,
     EventSeverity::INFO},
    {VolumeState::NORMAL, VolumeState::REBUILDING_ALTERNATE, VolumeEventType::VOLUME_REBUILD_COMPLETE,
     EventSeverity::INFO},
    {VolumeState::NORMAL, VolumeState::VERIFYING, VolumeEventType::VOLUME_VERIFY_STOP, EventSeverity::INFO},
    {VolumeState::NORMAL, VolumeState::VERIFYING_AND_FIXING, VolumeEventType::VOLUME_VERIFY_AND_FIX_STOP,
     EventSeverity::INFO},
    {VolumeState::NORMAL, VolumeState::GENERAL_MIGRATION, VolumeEventType::VOLUME_MIGRATION_COMPLETE,
     EventSeverity::INFO},
    {VolumeState::NORMAL, VolumeState::LOCKED, VolumeEventType::VOLUME_UNLOCKED, EventSeverity::INFO},
    {VolumeState::NORMAL, kAny, VolumeEventType::VOLUME_NORMAL, EventSeverity::INFO},
    {VolumeState::DEGRADED, kAny, VolumeEventType::VOLUME_DEGRADED, EventSeverity::WARNING},
    {VolumeState::FAILED, kAny, VolumeEventType::VOLUME_FAILED, EventSeverity::ERROR},
    {VolumeState::INITIALIZING, kAny, VolumeEventType::VOLUME_INITIALIZE_STARTED, EventSeverity::INFO},
    {VolumeState::REBUILDING, kAny, VolumeEventType::VOLUME_REBUILD_STARTED, EventSeverity::INFO},
    {VolumeState::REBUILDING_ALTERNATE, kAny, VolumeEventType::VOLUME_REBUILD_STARTED, EventSeverity::INFO},
    {VolumeState::VERIFYING, kAny, VolumeEventType::VOLUME_VERIFY_STARTED, EventSeverity::INFO},
    {VolumeState::VERIFYING_AND_FIXING, kAny, VolumeEventType::VOLUME_VERIFY_AND_FIX_STARTED,
     EventSeverity::INFO},
    {VolumeState::GENERAL_MIGRATION, kAny, VolumeEventType::VOLUME_MIGRATION_STARTED, EventSeverity::INFO},
    {VolumeState::LOCKED, kAny, VolumeEventType::VOLUME_LOCKED, EventSeverity::INFO},
    {VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK, kAny, VolumeEventType::VOLUME_MASTER_DISK_FAILED,
     EventSeverity::ERROR},
};

/// The first row whose state was entered or left tells the event.
struct DiskChange {
  bool entered;
  DiskState state;
  DiskEventType type;
  EventSeverity severity;
};

constexpr bool kEntered = true;
constexpr bool kLeft = false;

/// A missing disk is no more than information: whether it was taken out or broke is not known.
const DiskChange kDiskChanges[] = {
    {kLeft, DiskState::LOCKED, DiskEventType::DISK_UNLOCKED, EventSeverity::INFO},
    {kEntered, DiskState::MISSING, DiskEventType::DISK_MISSING, EventSeverity::INFO},
    {kEntered, DiskState::SMART_EVENT_TRIGGERED, DiskEventType::DISK_SMART, EventSeverity::WARNING},
    {kEntered, DiskState::FAILED, DiskEventType::DISK_FAILED, EventSeverity::ERROR},
};

class Recorder {
 public:
  explicit Recorder(EventJournal& journal) : m_journal(journal) {}

  void add(const Volume& volume, VolumeEventType type, EventSeverity severity = EventSeverity::INFO) {
    m_journal.add(std::make_shared<mirn_events::volume_event>(severity, type, volume));
  }

  void add(const EndDevice& device, DiskEventType type, EventSeverity severity = EventSeverity::INFO) {
    m_journal.add(std::make_shared<mirn_events::disk_event>(severity, type, device));
  }

  void addChange(const Volume& before, const Volume& after) {
    if (before.state() == after.state()) return;
    const auto row =
        std::find_if(std::begin(kVolumeChanges), std::end(kVolumeChanges), [&](const auto& change) {
          return change.to == after.state() && (!change.from || *change.from == before.state());
        });
    if (row != std::end(kVolumeChanges)) add(after, row->type, row->severity);
  }

  void addChange(const EndDevice& before, const EndDevice& after) {
    const auto row = std::find_if(std::begin(kDiskChanges), std::end(kDiskChanges), [&](const auto& change) {
      const bool was = before.disk().state == change.state;
      const bool is = after.disk().state == change.state;
      return was != is && is == change.entered;
    });
    if (row != std::end(kDiskChanges)) add(after, row->type, row->severity);
  }

 private:
  EventJournal& m_journal;
};

/// An array member whose disk was never known goes without an event.
bool isRemovalWorthAnEvent(const EndDevice& device) {
  return device.disk().type != DiskType::UNKNOWN || device.disk().usage != DiskUsage::ARRAY_MEMBER;
}

bool isAdditionWorthAnEvent(const EndDevice& device) { return device.disk().state != DiskState::MISSING; }

}  // namespace

void compareVolumes(const std::vector<Volume>& oldVolumes, const std::vector<Volume>& newVolumes,
                    EventJournal& journal) {
  const IdIndex oldById(oldVolumes);
  const IdIndex newById(newVolumes);
  Recorder recorder(journal);
  for (const auto& volume : oldVolumes) {
    if (!newById.find(volume.id())) recorder.add(volume, VolumeEventType::VOLUME_DELETED);
  }
  for (const auto& volume : newVolumes) {
    if (const auto* before = oldById.find(volume.id())) {
      recorder.addChange(*before, volume);
    } else {
      recorder.add(volume, VolumeEventType::VOLUME_ADDED);
    }
  }
}

void compareEndDevices(const std::vector<EndDevice>& oldDevices, const std::vector<EndDevice>& newDevices,
                       EventJournal& journal) {
  const IdIndex oldById(oldDevices);
  const IdIndex newById(newDevices);
  Recorder recorder(journal);
  for (const auto& device : oldDevices) {
    const bool gone = !newById.find(device.id());
    if (gone && isRemovalWorthAnEvent(device)) recorder.add(device, DiskEventType::DISK_REMOVED);
  }
  for (const auto& device : newDevices) {
    if (const auto* before = oldById.find(device.id())) {
      recorder.addChange(*before, device);
    } else if (isAdditionWorthAnEvent(device)) {
      recorder.add(device, DiskEventType::DISK_ADDED);
    }
  }
}
