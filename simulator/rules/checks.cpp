#include "rules/checks.h"

#include <algorithm>
#include <set>

#include "model/capacity.h"
#include "model/disk_role.h"
#include "model/names.h"

namespace simulator {
namespace {

constexpr std::uint64_t kMaxSizeMiB = std::uint64_t{1} << 40;

bool isOneLevel(std::uint32_t code) {
  return code == VEX_RAID_LEVEL_0 || code == VEX_RAID_LEVEL_1 || code == VEX_RAID_LEVEL_5 ||
         code == VEX_RAID_LEVEL_10;
}

bool isOneBit(std::uint32_t code) { return code != 0 && (code & (code - 1)) == 0; }

/// `others` are the journals that stand on the drive already.
void requireJournalingDrive(const EndDevice& drive, const EndDevice& member, std::uint32_t others) {
  require(drive.controller == member.controller, VEX_STATUS_DISK_ON_WRONG_CONTROLLER);
  require(isSupported(drive) && drive.x8 == X8Role::NONE, VEX_STATUS_UNSUPPORTED_DISK);
  require(drive.logicalSectorSize == member.logicalSectorSize, VEX_STATUS_INVALID_SECTOR_SIZE);
  const bool isJournal = usageOf(drive) == DiskUsage::JOURNALING_DRIVE && isUsable(drive);
  require(isFree(drive) || isJournal, VEX_STATUS_INVALID_STATE);
  require(others < journalRoom(drive), VEX_STATUS_DISK_TOO_SMALL);
}

}  // namespace

bool parseSwitch(std::uint32_t enable) {
  require(enable <= 1, VEX_STATUS_INVALID_PARAMETER);
  return enable == 1;
}

EndDevice& diskAt(Machine& machine, Handle handle) {
  EndDevice& disk = machine.devices.at(handle);
  require(isListed(disk), VEX_STATUS_INVALID_HANDLE);
  require(disk.type == DeviceType::DISK, VEX_STATUS_INVALID_DISK);
  return disk;
}

Controller& controllerOf(Machine& machine, const Volume& volume) {
  return machine.controllers.at(machine.arrays.at(volume.array).controller);
}

void takeAsNormal(EndDevice& disk) {
  disk.failed = false;
  if (disk.condition == DiskState::OFFLINE || disk.condition == DiskState::MANUAL_OFFLINE) {
    disk.condition = DiskState::NORMAL;
  }
}

void requireCandidate(const Machine& machine, const EndDevice& disk, const Membership& membership) {
  const Status judgement = judgeCandidate(machine, disk, membership);
  require(judgement == VEX_STATUS_SUCCESS, judgement);
}

void requireDisks(Machine& machine, const std::vector<Handle>& disks) {
  require(!disks.empty(), VEX_STATUS_NOT_ENOUGH_ITEMS);
  for (const Handle disk : disks) diskAt(machine, disk);
  const std::set<Handle> different(disks.begin(), disks.end());
  require(different.size() == disks.size(), VEX_STATUS_INVALID_DISK);
}

void requireRaidDiskRoom(const Machine& machine, const RaidEngine& engine, const std::vector<Handle>& disks) {
  const auto isNew = [&](Handle disk) { return !machine.devices.at(disk).spare; };
  const auto more = static_cast<std::size_t>(std::count_if(disks.begin(), disks.end(), isNew));
  require(raidDisksOf(machine, engine) + more <= engine.maxRaidDisksSupported, VEX_STATUS_TOO_MANY_ITEMS);
}

const RaidEngine& requireEngine(const Machine& machine, const Controller& controller) {
  const RaidEngine* const engine = machine.engines.find(controller.engine);
  require(engine != nullptr && engine->raidEnabled, VEX_STATUS_NOT_SUPPORTED);
  return *engine;
}

const LevelCapability& requireLevel(const RaidEngine& engine, std::uint32_t code) {
  require(isOneLevel(code), VEX_STATUS_INVALID_RAID_LEVEL);
  const LevelCapability* const level = findLevel(engine, static_cast<RaidLevel>(code));
  require(level != nullptr, VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED);
  return *level;
}

StripSize requireStripSize(const LevelCapability& level, std::uint32_t code) {
  if (level.level == RaidLevel::RAID_1) return level.defaultStripSize;
  require(isOneBit(code) && (level.stripSizes & code) != 0, VEX_STATUS_INVALID_STRIP_SIZE);
  return static_cast<StripSize>(code);
}

void requireName(const Machine& machine, std::string_view name, Handle self) {
  require(isVolumeName(name), VEX_STATUS_INVALID_VOLUME_NAME);
  const Volume* const bearer = findVolumeByName(machine, name);
  require(bearer == nullptr || bearer->handle == self, VEX_STATUS_DUPLICATE_VOLUME_NAME);
}

std::uint64_t requireSize(const Controller& controller, RaidLevel level, std::size_t disks,
                          std::uint64_t sizeMiB, std::uint64_t freePerDisk) {
  require(sizeMiB <= kMaxSizeMiB && freePerDisk > 0, VEX_STATUS_INVALID_VOLUME_SIZE);
  const std::uint64_t size = sizeMiB == 0 ? freePerDisk * dataDisks(level, disks) : sizeMiB * kMiB;
  require(shareOf(level, disks, size) <= freePerDisk, VEX_STATUS_INVALID_VOLUME_SIZE);
  require(size <= kTwoTb || controller.twoTbVolumeSupport, VEX_STATUS_VOLUME_OVER_2TB);
  return size;
}

RwhChoice requireRwh(Machine& machine, const RaidEngine& engine, RaidLevel level, std::uint32_t code,
                     Handle drive, const std::vector<Handle>& members, Handle kept) {
  require(code <= VEX_RWH_POLICY_JOURNALING_DRIVE, VEX_STATUS_INVALID_RWH_MODE);
  const auto policy = static_cast<RwhPolicy>(code);
  if (policy == RwhPolicy::RWH_OFF) return {};
  require((engine.rwhPolicies & bitOf(policy)) != 0, VEX_STATUS_INVALID_RWH_MODE);
  require(level == RaidLevel::RAID_5, VEX_STATUS_RAID_LEVEL_NOT_SUPPORTED);
  if (policy == RwhPolicy::RWH_DISTRIBUTED) return {policy, 0};
  require(drive != 0 && std::count(members.begin(), members.end(), drive) == 0, VEX_STATUS_INVALID_DISK);
  const EndDevice& disk = diskAt(machine, drive);
  const std::uint32_t own = drive == kept ? 1 : 0;
  requireJournalingDrive(disk, machine.devices.at(members.front()), disk.journalUsers - own);
  return {policy, drive};
}

}  // namespace simulator
