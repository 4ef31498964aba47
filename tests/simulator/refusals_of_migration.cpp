#include "simulator/refusal_rows.h"

namespace {

using W = const Workbench&;

/// Level, disks, strip size and size of a migration, good unless a row says otherwise.
struct Way {
  const char* volume = "stripe";
  std::uint32_t level = VEX_RAID_LEVEL_0;
  std::vector<const char*> disks = {};
  std::uint32_t strip = VEX_STRIP_SIZE_128KB;
  std::uint64_t size = 0;
};

RefusalRow migrating(
    VEX_STATUS status, const char* condition, const Way& way, RefusalRow::Arrange arrange = [](W) {}) {
  return {"VexRaidLevelModify", status, condition,
          [=](W w) {
            std::vector<VEX_HANDLE> handles;
            for (const char* const id : way.disks) handles.push_back(w.diskHandle(id));
            return modify(w.volumeHandle(way.volume), way.level, handles, way.strip, way.size);
          },
          std::move(arrange)};
}

constexpr std::uint32_t kRaid5 = VEX_RAID_LEVEL_5;
constexpr std::uint32_t kRaid0 = VEX_RAID_LEVEL_0;

void makeX8Volume(W w) {
  Wanted wanted;
  wanted.size = 0;
  done(createFromDisks(w.diskHandles({"x8", "other x8"}), wanted));
}

const std::vector<RefusalRow> kRows = {
    {"VexRaidLevelModify", 3, "NoVolume", [](W) { return modify(kNothing, kRaid0); }},
    {"VexRaidLevelModify", 3, "NoDevice",
     [](W w) { return modify(w.volumeHandle("stripe"), kRaid0, {kNothing}); }},
    {"VexRaidLevelModify", 2, "NoList",
     [](W w) {
       VEX_RAID_LEVEL_MODIFY_PARAMS params = {};
       params.raidLevel = kRaid0;
       params.diskCount = 1;
       return VexRaidLevelModify(w.volumeHandle("stripe"), params);
     }},
    migrating(14, "ControllerWithout", {"plain"}),
    migrating(7, "NoLevel", {"stripe", 0}),
    migrating(7, "TwoLevels", {"stripe", 3}),
    migrating(7, "InexpressibleLevel", {"stripe", VEX_RAID_LEVEL_INEXPRESSIBLE}),
    migrating(7, "NoWayThere", {"ten", kRaid0}),
    migrating(27, "LevelUnknownToTheEngine", {"tiny", kRaid5}),
    migrating(18, "Degraded", {"five", kRaid0}, pulled("a2")),
    migrating(18, "TwoVolumes", {"five", kRaid0}, [](W w) { done(create(w.arrayHandle("five"), Wanted())); }),
    migrating(43, "NoDisk", {"stripe", kRaid5, {"optical"}}),
    migrating(43, "DiskTwice", {"stripe", kRaid0, {"a7", "a7"}}),
    migrating(31, "NeedsADisk", {"stripe", kRaid5}),
    migrating(31, "TooManyDisks", {"stripe", kRaid5, {"a7", "a8", "a9", "large"}}),
    migrating(4, "StripOfAnotherLevel", {"stripe", kRaid0, {"a7"}, VEX_STRIP_SIZE_2KB}),
    migrating(4, "TwoStrips", {"stripe", kRaid0, {"a7"}, VEX_STRIP_SIZE_64KB | VEX_STRIP_SIZE_128KB}),
    migrating(29, "X8", {"stripe", kRaid5, {"x8"}}),
    {"VexRaidLevelModify", 29, "X8Member",
     [](W w) { return modify(w.volumeNamed("new").volumeHandle, kRaid5, w.diskHandles({"a7"})); },
     makeX8Volume},
    migrating(29, "Unsupported", {"stripe", kRaid5, {"odd"}}),
    migrating(38, "OtherController", {"stripe", kRaid5, {"c0"}}),
    migrating(35, "ForeignDrive", {"tiny", kRaid0, {"d3"}}),
    migrating(34, "OtherSectors", {"stripe", kRaid5, {"sectors"}}),
    migrating(18, "MemberOfAnother", {"stripe", kRaid5, {"a0"}}),
    migrating(37, "TooSmall", {"stripe", kRaid5, {"small"}}),
    migrating(24, "TooManyForTheEngine", {"stripe", kRaid5, {"a7", "a8"}},
              [](W w) {
                for (const char* const id : {"a9", "large", "journal", "sectors"}) {
                  done(VexDiskMarkAsSpare(w.diskHandle(id), 0));
                }
              }),
    migrating(6, "SmallerThanNow", {"stripe", kRaid0, {"a7"}, VEX_STRIP_SIZE_128KB, 599}),
    migrating(6, "TooLarge", {"stripe", kRaid0, {"a7"}, VEX_STRIP_SIZE_128KB, 3001}),
    migrating(6, "NoRoomForRedundancy", {"ten", kRaid5, {}, VEX_STRIP_SIZE_64KB, 3001}),
    migrating(39, "VolumeOver2Tb", {"tiny", kRaid0, {}, VEX_STRIP_SIZE_128KB, 2097153}),
    migrating(2, "NothingToDo", {"stripe", kRaid0, {}, VEX_STRIP_SIZE_64KB, 600}),
};

}  // namespace

std::vector<RefusalRow> migrationRefusals() { return kRows; }
