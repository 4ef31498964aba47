#ifndef MIRN_TESTS_SIMULATOR_REFUSAL_ROWS_H
#define MIRN_TESTS_SIMULATOR_REFUSAL_ROWS_H

#include <functional>
#include <string>
#include <vector>

#include "simulator/workbench_fixture.h"

/// One condition under which an action is refused.
struct RefusalRow {
  using Act = std::function<VEX_STATUS(const Workbench&)>;
  using Arrange = std::function<void(const Workbench&)>;

  std::string operation;
  VEX_STATUS status;
  std::string condition;  ///< in letters, for the name of the test
  Act act;
  Arrange arrange = [](const Workbench&) {};

  std::string name() const { return operation.substr(3) + "_" + std::to_string(status) + "_" + condition; }
};

inline void PrintTo(const RefusalRow& row, std::ostream* stream) { *stream << row.name(); }

// A file each.
std::vector<RefusalRow> controllerRefusals();
std::vector<RefusalRow> diskRefusals();
std::vector<RefusalRow> arrayRefusals();
std::vector<RefusalRow> volumeRefusals();
std::vector<RefusalRow> creationRefusals();
std::vector<RefusalRow> migrationRefusals();

inline std::vector<RefusalRow> allRefusals() {
  std::vector<RefusalRow> all;
  for (const auto& rows : {controllerRefusals(), diskRefusals(), arrayRefusals(), volumeRefusals(),
                           creationRefusals(), migrationRefusals()}) {
    all.insert(all.end(), rows.begin(), rows.end());
  }
  return all;
}

// What rows are made of.

constexpr VEX_HANDLE kNothing = 4711;

/// A volume to be made, good unless a row says otherwise.
struct Wanted {
  const char* name = "new";
  std::uint32_t level = VEX_RAID_LEVEL_0;
  std::uint32_t strip = VEX_STRIP_SIZE_128KB;
  std::uint64_t size = 100;
  std::uint32_t rwh = VEX_RWH_POLICY_OFF;
  VEX_HANDLE drive = 0;
};

template <class Params>
void fillParams(Params& params, const Wanted& wanted) {
  std::string(wanted.name).copy(params.name, sizeof(params.name));
  params.raidLevel = wanted.level;
  params.stripSize = wanted.strip;
  params.size = wanted.size;
  params.rwhPolicy = wanted.rwh;
  params.journalingDriveHandle = wanted.drive;
}

inline VEX_STATUS create(VEX_HANDLE array, const Wanted& wanted) {
  VEX_CREATE_VOLUME_PARAMS params = {};
  params.arrayHandle = array;
  fillParams(params, wanted);
  return VexVolumeCreate(params);
}

inline VEX_STATUS createFromDisks(const std::vector<VEX_HANDLE>& disks, const Wanted& wanted,
                                  VEX_HANDLE source = 0) {
  VEX_CREATE_FROM_DISKS_PARAMS params = {};
  params.disks = disks.data();
  params.diskCount = static_cast<std::uint32_t>(disks.size());
  params.sourceDiskHandle = source;
  fillParams(params, wanted);
  VEX_HANDLE volume = 0;
  return VexVolumeCreateFromDisks(params, &volume);
}

inline VEX_STATUS modify(VEX_HANDLE volume, std::uint32_t level, const std::vector<VEX_HANDLE>& disks = {},
                         std::uint32_t strip = VEX_STRIP_SIZE_64KB, std::uint64_t size = 0) {
  VEX_RAID_LEVEL_MODIFY_PARAMS params = {};
  params.raidLevel = level;
  params.stripSize = strip;
  params.size = size;
  params.disks = disks.empty() ? nullptr : disks.data();
  params.diskCount = static_cast<std::uint32_t>(disks.size());
  return VexRaidLevelModify(volume, params);
}

inline VEX_STATUS addDisks(VEX_HANDLE array, const std::vector<VEX_HANDLE>& disks) {
  return VexAddDisksToArray(array, disks.data(), static_cast<std::uint32_t>(disks.size()), 0);
}

/// Does something that must work for the row to mean anything.
inline void done(VEX_STATUS status) { ASSERT_EQ(status, 0U); }

inline RefusalRow::Arrange pulled(const char* disk) {
  return [disk](const Workbench&) { done(VexSimPullDisk(disk)); };
}

#endif
