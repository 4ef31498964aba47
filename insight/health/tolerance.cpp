#include "health/tolerance.h"

#include <algorithm>
#include <map>
#include <optional>

namespace insight {

namespace {

constexpr wchar_t kNormal[] = L"NORMAL";

/// Work during which all redundancy is there.
bool isVerification(const std::wstring& action) {
  return action == L"VERIFYING" || action == L"VERIFYING_AND_FIXING";
}

/// Why a state, of the volume or of the work on it, lets nothing be said.
const char* doubtAbout(const std::wstring& state) {
  static const std::map<std::wstring, const char*> kDoubts{
      {L"DEGRADED", "a disk is lost already"},
      {L"REBUILDING", "the redundancy is being written again"},
      {L"INITIALIZING", "the redundancy is being written for the first time"},
      {L"GENERAL_MIGRATION", "the data are being laid out anew"},
      {L"LOCKED", "the volume is locked"},
      {L"FAILED", "the volume has failed"},
      {L"NON_REDUNDANT_VOLUME_FAILED_DISK", "the volume has failed"},
  };
  const auto found = kDoubts.find(state);
  return found == kDoubts.end() ? "the state of the volume is unknown" : found->second;
}

/// The disks that a level does without; nothing for a level that is not known.
std::optional<std::uint64_t> spareDisksOf(const VolumeView& volume) {
  if (volume.level == L"RAID_0") return 0;
  if (volume.level == L"RAID_1" && volume.diskCount > 0) return volume.diskCount - 1;
  if (volume.level == L"RAID_5" || volume.level == L"RAID_10") return 1;
  return {};
}

/// Empty when nothing stands against the level's word.
std::string doubtAbout(const MachineView& machine, const VolumeView& volume, bool isRedundant) {
  const std::optional<std::wstring> action = machine.workOn(volume.id);
  if (action && !isVerification(*action)) return doubtAbout(*action);
  if (volume.state != kNormal && !isVerification(volume.state)) return doubtAbout(volume.state);
  if (volume.isMigrating) return "the data are being laid out anew";
  if (isRedundant && !volume.isInitialized) return "the redundancy was never written";
  const std::vector<const DiskView*> members = machine.membersOf(volume.arrayId);
  if (members.size() != volume.diskCount) return "not all its disks can be seen";
  const bool areAllNormal = std::all_of(members.begin(), members.end(),
                                        [](const DiskView* disk) { return disk->state == kNormal; });
  return areAllNormal ? "" : "a disk of it is not as it should be";
}

}  // namespace

Tolerance toleranceOf(const MachineView& machine, const VolumeView& volume) {
  const std::optional<std::uint64_t> spare = spareDisksOf(volume);
  if (!spare) return {0, false, "the level is unknown"};
  std::string doubt = doubtAbout(machine, volume, *spare > 0);
  if (!doubt.empty()) return {0, false, std::move(doubt)};
  return {*spare, true, {}};
}

}  // namespace insight
