#include "health/machine_causes.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>

#include "health/cause_kinds.h"
#include "text.h"
#include "view/object_path.h"

namespace insight {

namespace {

constexpr wchar_t kNormal[] = L"NORMAL";
constexpr wchar_t kRebuilding[] = L"REBUILDING";
constexpr wchar_t kUnknown[] = L"UNKNOWN";
constexpr wchar_t kRaid0[] = L"RAID_0";
constexpr wchar_t kSpare[] = L"SPARE";

template <class Text>
Text replaced(Text text, const Text& place, const Text& value) {
  const auto at = text.find(place);
  return at == Text::npos ? text : text.replace(at, place.size(), value);
}

std::vector<NextStep> stepsOf(const CauseRow& row, const ObjectRef& object) {
  std::vector<NextStep> steps;
  for (const StepRow& each : row.steps) {
    NextStep step{each.operation, {}};
    for (const auto& [name, value] : each.arguments) {
      step.arguments[name] = replaced<std::wstring>(value, L"{id}", object.id);
    }
    steps.push_back(std::move(step));
  }
  return steps;
}

/// `path` leads to the object that it is about.
Cause causeOf(CauseKind kind, std::vector<ObjectRef> path, std::vector<ObjectRef> atRisk) {
  const CauseRow& row = causeRow(kind);
  Cause cause;
  cause.kind = row.id;
  cause.severity = row.severity;
  cause.object = path.back();
  cause.path = std::move(path);
  cause.text = replaced<std::string>(row.sentence, "{name}", wideToUtf8(cause.object.name));
  cause.atRisk = std::move(atRisk);
  cause.steps = stepsOf(row, cause.object);
  return cause;
}

/// Looks at one machine, and collects what is wrong with it.
class Inspection {
 public:
  explicit Inspection(const MachineView& machine) : m_machine(machine) {
    for (const VolumeView& volume : machine.volumes) {
      m_volumesOfArray[volume.arrayId].push_back(&volume);
      if (!volume.journalingDriveId.empty()) m_volumesOfDrive[volume.journalingDriveId].push_back(&volume);
    }
    for (const DiskView& disk : machine.disks) {
      if (disk.usage != kSpare || disk.state != kNormal) continue;
      std::uint64_t& largest = m_largestSpare[disk.controllerId];
      largest = std::max(largest, disk.totalBytes);
    }
  }

  std::vector<Cause> run() {
    for (const VolumeView& volume : m_machine.volumes) look(volume);
    for (const DiskView& disk : m_machine.disks) look(disk);
    for (const ArrayView& array : m_machine.arrays) look(array);
    return std::move(m_causes);
  }

 private:
  using Volumes = std::vector<const VolumeView*>;
  using VolumesByOwner = std::unordered_map<std::wstring, Volumes>;

  Cause& add(CauseKind kind, const VolumeView& volume) {
    m_causes.push_back(causeOf(kind, pathTo(m_machine, volume), {refOf(volume)}));
    return m_causes.back();
  }

  Cause& add(CauseKind kind, const DiskView& disk) {
    m_causes.push_back(causeOf(kind, pathTo(m_machine, disk), volumesOn(disk)));
    return m_causes.back();
  }

  void look(const VolumeView& volume) {
    if (volume.state == L"FAILED" || volume.state == L"NON_REDUNDANT_VOLUME_FAILED_DISK") {
      add(CauseKind::kVolumeFailed, volume);
    }
    if (volume.state == L"DEGRADED" || isBeingRebuilt(volume)) addDegraded(volume);
    if (volume.state == L"LOCKED") add(CauseKind::kVolumeLocked, volume);
    if (volume.state == kUnknown || volume.state.empty()) add(CauseKind::kVolumeUnknown, volume);
    if (volume.verifyErrors > 0 || volume.badBlocks > 0) add(CauseKind::kVerifyErrors, volume);
    if (hasLostItsJournal(volume)) add(CauseKind::kJournalingDriveLost, volume);
  }

  bool isBeingRebuilt(const VolumeView& volume) const {
    return volume.state == kRebuilding || m_machine.workOn(volume.id) == kRebuilding;
  }

  void addDegraded(const VolumeView& volume) {
    Cause& cause = add(CauseKind::kVolumeDegraded, volume);
    if (!mayLoseAnother(volume)) cause.severity = Severity::kCritical;
    if (isBeingRebuilt(volume)) cause.steps.clear();  // it is being done already
  }

  /// Of the levels, mirrors alone may have lost one disk and still spare another. Which of the disks is the
  /// one that a rebuild is not done with nobody tells.
  bool mayLoseAnother(const VolumeView& volume) const {
    if (volume.level != L"RAID_1" || isBeingRebuilt(volume)) return false;
    const auto members = m_machine.membersOf(volume.arrayId);
    const auto isSound = [](const DiskView* disk) { return disk->state == kNormal; };
    return std::count_if(members.begin(), members.end(), isSound) > 1;
  }

  bool hasLostItsJournal(const VolumeView& volume) const {
    if (volume.writeHolePolicy != L"RWH_JOURNALING_DRIVE") return false;
    const DiskView* const drive = m_machine.disk(volume.journalingDriveId);
    return drive == nullptr || drive->state == L"FAILED" || drive->state == L"MISSING";
  }

  void look(const DiskView& disk) {
    const std::optional<CauseKind> kind = kindOf(disk.state);
    if (!kind) return;
    Cause& cause = add(*kind, disk);
    cause.severity = severityOf(*kind, disk);
  }

  static std::optional<CauseKind> kindOf(const std::wstring& state) {
    static const std::unordered_map<std::wstring, CauseKind> kKinds{
        {L"FAILED", CauseKind::kDiskFailed},
        {L"MISSING", CauseKind::kDiskMissing},
        {L"SMART_EVENT_TRIGGERED", CauseKind::kDiskSmart},
        {L"OFFLINE", CauseKind::kDiskOffline},
        {L"MANUAL_OFFLINE", CauseKind::kDiskOffline},
        {L"LOCKED", CauseKind::kDiskLocked},
        {L"CONFIG_IS_UPREV", CauseKind::kDiskUprev},
        {L"INCOMPATIBLE", CauseKind::kDiskUnsupported},
        {L"UNSUPPORTED", CauseKind::kDiskUnsupported},
    };
    const auto found = kKinds.find(state);
    if (found == kKinds.end()) return {};
    return found->second;
  }

  /// A failed disk without an array takes all that is on it along; one that was put offline by hand, or whose
  /// use nobody knows, is no usual one.
  static Severity severityOf(CauseKind kind, const DiskView& disk) {
    const bool isUseUnknown = disk.usage == kUnknown;
    if (kind == CauseKind::kDiskFailed && (isUseUnknown || disk.usage == L"PASS_THROUGH")) {
      return Severity::kCritical;
    }
    if (kind == CauseKind::kDiskOffline && (isUseUnknown || disk.state == L"MANUAL_OFFLINE")) {
      return Severity::kWarning;
    }
    return causeRow(kind).severity;
  }

  /// The volumes that stand on it or keep their journal there.
  std::vector<ObjectRef> volumesOn(const DiskView& disk) const {
    std::vector<ObjectRef> volumes;
    const auto append = [&](const VolumesByOwner& all, const std::wstring& owner) {
      const auto found = all.find(owner);
      if (found == all.end() || owner.empty()) return;
      for (const VolumeView* const volume : found->second) volumes.push_back(refOf(*volume));
    };
    append(m_volumesOfArray, disk.arrayId);
    append(m_volumesOfDrive, disk.id);
    return volumes;
  }

  void look(const ArrayView& array) {
    std::vector<ObjectRef> redundant;
    const auto found = m_volumesOfArray.find(array.id);
    if (found == m_volumesOfArray.end()) return;
    for (const VolumeView* const volume : found->second) {
      if (volume->level != kRaid0) redundant.push_back(refOf(*volume));
    }
    if (redundant.empty() || fitsASpare(array)) return;
    m_causes.push_back(causeOf(CauseKind::kNoSpareFits, pathTo(m_machine, array), std::move(redundant)));
  }

  /// Whether a sound spare of its controllers is as large as the smallest of its disks.
  bool fitsASpare(const ArrayView& array) const {
    const auto members = m_machine.membersOf(array.id);
    if (members.empty()) return true;  // nobody knows what would fit
    const auto smallest = std::min_element(
        members.begin(), members.end(),
        [](const DiskView* one, const DiskView* other) { return one->totalBytes < other->totalBytes; });
    return std::any_of(array.controllerIds.begin(), array.controllerIds.end(), [&](const std::wstring& id) {
      const auto largest = m_largestSpare.find(id);
      return largest != m_largestSpare.end() && largest->second >= (*smallest)->totalBytes;
    });
  }

  const MachineView& m_machine;
  VolumesByOwner m_volumesOfArray;
  VolumesByOwner m_volumesOfDrive;                                 ///< By the drive of their journal.
  std::unordered_map<std::wstring, std::uint64_t> m_largestSpare;  ///< By controller.
  std::vector<Cause> m_causes;
};

std::vector<ObjectRef> refsOf(const std::vector<VolumeView>& volumes) {
  std::vector<ObjectRef> refs;
  for (const VolumeView& volume : volumes) refs.push_back(refOf(volume));
  return refs;
}

}  // namespace

bool isOld(const MachineView& machine, std::uint64_t now) {
  if (!machine.takenAt) return true;
  if (machine.failedAt && *machine.failedAt >= *machine.takenAt) return true;
  return now > *machine.takenAt && now - *machine.takenAt > kOldestPictureMilliseconds;
}

std::vector<Cause> causesOf(const MachineView& machine, std::uint64_t now) {
  std::vector<Cause> causes = Inspection(machine).run();
  if (!isOld(machine, now)) return causes;
  causes.push_back(causeOf(CauseKind::kPictureOld, {{"service", {}, L"service"}}, refsOf(machine.volumes)));
  if (machine.failedAt && !machine.failure.empty()) {
    causes.back().text += " The last try to renew it: " + wideToUtf8(machine.failure);
  }
  return causes;
}

}  // namespace insight
