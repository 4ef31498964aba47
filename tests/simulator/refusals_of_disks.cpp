#include "simulator/refusal_rows.h"

namespace {

using W = const Workbench&;
using OneDisk = VEX_STATUS (*)(VEX_HANDLE);

VEX_STATUS unlock(VEX_HANDLE disk, const char* password, std::uint32_t master) {
  VEX_UNLOCK_PARAMS params = {};
  std::string(password).copy(params.password, sizeof(params.password));
  params.master = master;
  return VexDiskUnlock(disk, &params);
}

/// What every action on a disk asks.
std::vector<RefusalRow> rowsOfAnyDisk(const char* operation,
                                      const std::function<VEX_STATUS(VEX_HANDLE)>& act) {
  return {
      {operation, 3, "NoDevice", [act](W) { return act(kNothing); }},
      {operation, 43, "NoDisk", [act](W w) { return act(w.diskHandle("optical")); }},
  };
}

RefusalRow inState(
    const char* operation, VEX_STATUS status, const char* condition, OneDisk act, const char* disk,
    RefusalRow::Arrange arrange = [](W) {}) {
  return {operation, status, condition, [=](W w) { return act(w.diskHandle(disk)); }, std::move(arrange)};
}

VEX_STATUS globalSpare(VEX_HANDLE disk) { return VexDiskMarkAsSpare(disk, 0); }

RefusalRow dedicated(VEX_STATUS status, const char* condition, const char* disk, const char* array) {
  return {"VexDiskMarkAsSpare", status, condition,
          [=](W w) { return VexDiskMarkAsSpare(w.diskHandle(disk), w.arrayHandle(array)); }};
}

const std::vector<RefusalRow> kOwnRows = {
    inState("VexDiskClearMetadata", 18, "Member", VexDiskClearMetadata, "a0"),
    inState("VexDiskClearMetadata", 18, "Failed", VexDiskClearMetadata, "a7",
            [](W) { done(VexSimFailDisk("a7")); }),
    inState("VexDiskClearMetadata", 18, "Locked", VexDiskClearMetadata, "locked"),
    inState("VexDiskClearMetadata", 18, "SystemDisk", VexDiskClearMetadata, "system"),
    inState("VexDiskMarkAsNormal", 14, "ControllerWithout", VexDiskMarkAsNormal, "b0"),
    inState("VexDiskMarkAsNormal", 18, "Normal", VexDiskMarkAsNormal, "a7"),
    inState("VexDiskMarkAsSpare", 14, "ControllerWithout", globalSpare, "b3"),
    inState("VexDiskMarkAsSpare", 14, "NoEngine", globalSpare, "c0"),
    inState("VexDiskMarkAsSpare", 14, "EngineWithoutGlobalSpares", globalSpare, "d4"),
    inState("VexDiskMarkAsSpare", 29, "X8", globalSpare, "x8"),
    inState("VexDiskMarkAsSpare", 29, "Unsupported", globalSpare, "odd"),
    inState("VexDiskMarkAsSpare", 18, "Member", globalSpare, "a0"),
    inState("VexDiskMarkAsSpare", 18, "SmartEvent", globalSpare, "smart"),
    inState("VexDiskMarkAsSpare", 18, "SystemDisk", globalSpare, "system"),
    inState("VexDiskMarkAsSpare", 24, "TooManyRaidDisks", globalSpare, "sectors",
            [](W w) {
              for (const char* const id : {"a7", "a8", "a9", "large", "journal"}) {
                done(VexDiskMarkAsSpare(w.diskHandle(id), 0));
              }
            }),
    dedicated(29, "Over2Tb", "d6", "tiny"),
    {"VexDiskMarkAsSpare", 3, "NoArray",
     [](W w) { return VexDiskMarkAsSpare(w.diskHandle("a7"), kNothing); }},
    dedicated(35, "ForeignDrive", "d3", "tiny"),
    dedicated(38, "OtherController", "a7", "tiny"),
    dedicated(34, "OtherSectors", "sectors", "mirror"),
    dedicated(37, "TooSmall", "small", "mirror"),
    inState("VexDiskUnmarkAsSpare", 18, "NoSpare", VexDiskUnmarkAsSpare, "a7"),
    {"VexDiskAssignStoragePool", 18, "Member",
     [](W w) { return VexDiskAssignStoragePool(w.diskHandle("a0"), 1); }},
    {"VexDiskUnlock", 2, "NoParameters", [](W w) { return VexDiskUnlock(w.diskHandle("locked"), nullptr); }},
    {"VexDiskUnlock", 18, "NotLocked", [](W w) { return unlock(w.diskHandle("a7"), "user", 0); }},
    {"VexDiskUnlock", 19, "TooManyAttempts", [](W w) { return unlock(w.diskHandle("locked"), "user", 0); },
     [](W w) {
       for (int attempt = 0; attempt < 5; ++attempt) unlock(w.diskHandle("locked"), "guess", 0);
     }},
    inState("VexDiskResetSmartEvent", 18, "NoSmartEvent", VexDiskResetSmartEvent, "a7"),
    {"VexPhyRemove", 2, "NotOne", [](W w) { return VexPhyRemove(w.phyOf("a7"), 0); }},
    {"VexPhyRemove", 3, "NoPhy", [](W) { return VexPhyRemove(kNothing, 1); }},
    {"VexPhyRemove", 14, "NoHotplug", [](W w) { return VexPhyRemove(w.phyOf("sectors"), 1); }},
    {"VexPhyRemove", 18, "SystemDisk", [](W w) { return VexPhyRemove(w.phyOf("system"), 1); }},
    {"VexPhyRemove", 18, "LastOfTheSystem", [](W w) { return VexPhyRemove(w.phyOf("s1"), 1); }, pulled("s0")},
    {"VexPhyRemove", 18, "NothingThere",
     [](W w) {
       const std::vector<VEX_HANDLE> phys = w.handles(VexGetPhyHandles);
       for (const VEX_HANDLE phy : phys) {
         VEX_PHY_INFO info = {};
         EXPECT_EQ(VexGetPhyInfo(w.session(), phy, &info), 0U);
         if (info.endDeviceHandle == 0) return VexPhyRemove(phy, 1);
       }
       return VEX_STATUS_SUCCESS;
     },
     pulled("a7")},
};

}  // namespace

std::vector<RefusalRow> diskRefusals() {
  std::vector<RefusalRow> all = kOwnRows;
  const auto addRows = [&](const char* operation, const std::function<VEX_STATUS(VEX_HANDLE)>& act) {
    for (RefusalRow& row : rowsOfAnyDisk(operation, act)) all.push_back(std::move(row));
  };
  addRows("VexDiskClearMetadata", VexDiskClearMetadata);
  addRows("VexDiskMarkAsNormal", VexDiskMarkAsNormal);
  addRows("VexDiskMarkAsSpare", globalSpare);
  addRows("VexDiskUnmarkAsSpare", VexDiskUnmarkAsSpare);
  addRows("VexDiskAssignStoragePool", [](VEX_HANDLE disk) { return VexDiskAssignStoragePool(disk, 1); });
  addRows("VexDiskUnlock", [](VEX_HANDLE disk) { return unlock(disk, "user", 0); });
  addRows("VexDiskResetSmartEvent", VexDiskResetSmartEvent);
  return all;
}
