#include "simulator/refusal_rows.h"

namespace {

using W = const Workbench&;

RefusalRow rebuilding(VEX_STATUS status, const char* condition, const char* volume, const char* lost,
                      const char* disk) {
  return {"VexVolumeRebuild", status, condition,
          [=](W w) { return VexVolumeRebuild(w.volumeHandle(volume), w.diskHandle(disk)); }, pulled(lost)};
}

RefusalRow naming(VEX_STATUS status, const char* condition, const char* name) {
  return {"VexVolumeRename", status, condition,
          [=](W w) { return VexVolumeRename(w.volumeHandle("five"), name); }};
}

RefusalRow expanding(
    VEX_STATUS status, const char* condition, const char* volume, std::uint64_t size,
    RefusalRow::Arrange arrange = [](W) {}) {
  return {"VexExpandVolume", status, condition,
          [=](W w) { return VexExpandVolume(w.volumeHandle(volume), size); }, std::move(arrange)};
}

const std::vector<RefusalRow> kRows = {
    {"VexVolumeMarkAsNormal", 3, "NoVolume", [](W) { return VexVolumeMarkAsNormal(kNothing); }},
    {"VexVolumeMarkAsNormal", 14, "ControllerWithout",
     [](W w) { return VexVolumeMarkAsNormal(w.volumeHandle("plain")); }},
    {"VexVolumeMarkAsNormal", 18, "Normal",
     [](W w) { return VexVolumeMarkAsNormal(w.volumeHandle("five")); }},
    {"VexVolumeMarkAsNormal", 30, "MemberMissing",
     [](W w) { return VexVolumeMarkAsNormal(w.volumeHandle("stripe")); }, pulled("a5")},
    {"VexVolumeMarkAsNormal", 30, "MemberBlank",
     [](W w) { return VexVolumeMarkAsNormal(w.volumeHandle("five")); },
     [](W w) {
       done(VexDiskMarkAsSpare(w.diskHandle("a7"), 0));
       done(VexSimFailDisk("a2"));
       done(VexSimFailDisk("a3"));
     }},
    {"VexVolumeRebuild", 3, "NoVolume", [](W w) { return VexVolumeRebuild(kNothing, w.diskHandle("a7")); }},
    {"VexVolumeRebuild", 3, "NoDevice",
     [](W w) { return VexVolumeRebuild(w.volumeHandle("five"), kNothing); }},
    {"VexVolumeRebuild", 18, "Healthy",
     [](W w) { return VexVolumeRebuild(w.volumeHandle("five"), w.diskHandle("a7")); }},
    rebuilding(18, "Failed", "stripe", "a5", "a7"),
    rebuilding(43, "NoDisk", "five", "a2", "optical"),
    rebuilding(38, "OtherController", "five", "a2", "c0"),
    rebuilding(29, "X8", "five", "a2", "x8"),
    rebuilding(35, "ForeignDrive", "plain", "b0", "b2"),
    rebuilding(34, "OtherSectors", "five", "a2", "sectors"),
    rebuilding(18, "MemberOfAnother", "five", "a2", "a0"),
    rebuilding(37, "TooSmall", "five", "a2", "small"),
    {"VexVolumeInitialize", 3, "NoVolume", [](W) { return VexVolumeInitialize(kNothing); }},
    {"VexVolumeInitialize", 27, "NoRedundancy",
     [](W w) { return VexVolumeInitialize(w.volumeHandle("stripe")); }},
    {"VexVolumeInitialize", 18, "Degraded", [](W w) { return VexVolumeInitialize(w.volumeHandle("five")); },
     pulled("a2")},
    {"VexVolumeVerify", 3, "NoVolume", [](W) { return VexVolumeVerify(kNothing, 0); }},
    {"VexVolumeVerify", 2, "NoSwitch", [](W w) { return VexVolumeVerify(w.volumeHandle("five"), 2); }},
    {"VexVolumeVerify", 27, "NoRedundancy", [](W w) { return VexVolumeVerify(w.volumeHandle("stripe"), 0); }},
    {"VexVolumeVerify", 18, "Degraded", [](W w) { return VexVolumeVerify(w.volumeHandle("five"), 0); },
     pulled("a2")},
    {"VexVolumeVerify", 18, "NotInitialized",
     [](W w) { return VexVolumeVerify(w.volumeNamed("new").volumeHandle, 0); },
     [](W w) {
       Wanted wanted;
       wanted.level = VEX_RAID_LEVEL_5;
       done(create(w.arrayHandle("five"), wanted));
     }},
    {"VexVolumeCancelVerify", 3, "NoVolume", [](W) { return VexVolumeCancelVerify(kNothing); }},
    {"VexVolumeCancelVerify", 14, "ControllerWithout",
     [](W w) { return VexVolumeCancelVerify(w.volumeHandle("plain")); }},
    {"VexVolumeCancelVerify", 18, "NotVerifying",
     [](W w) { return VexVolumeCancelVerify(w.volumeHandle("five")); }},
    {"VexVolumeRename", 3, "NoVolume", [](W) { return VexVolumeRename(kNothing, "new"); }},
    {"VexVolumeRename", 14, "ControllerWithout",
     [](W w) { return VexVolumeRename(w.volumeHandle("plain"), "new"); }},
    naming(2, "NoText", nullptr),
    naming(5, "Empty", ""),
    naming(5, "TooLong", "seventeen letters"),
    naming(5, "BlankFirst", " new"),
    naming(5, "Backslash", "a\\b"),
    naming(5, "NotAscii", "na\xC3\xAFve"),
    naming(40, "TakenByAnother", "mirror"),
    {"VexVolumeSetCachePolicy", 3, "NoVolume", [](W) { return VexVolumeSetCachePolicy(kNothing, 1); }},
    {"VexVolumeSetCachePolicy", 14, "ControllerWithout",
     [](W w) { return VexVolumeSetCachePolicy(w.volumeHandle("plain"), 1); }},
    {"VexVolumeSetCachePolicy", 44, "Other",
     [](W w) { return VexVolumeSetCachePolicy(w.volumeHandle("five"), 0); }},
    {"VexVolumeSetCachePolicy", 44, "Unknown",
     [](W w) { return VexVolumeSetCachePolicy(w.volumeHandle("five"), 4); }},
    {"VexVolumeSetCachePolicy", 18, "Failed",
     [](W w) { return VexVolumeSetCachePolicy(w.volumeHandle("stripe"), 1); }, pulled("a5")},
    {"VexExpandVolume", 3, "NoVolume", [](W) { return VexExpandVolume(kNothing, 0); }},
    expanding(14, "ControllerWithout", "plain", 0),
    expanding(18, "Degraded", "five", 0, pulled("a2")),
    expanding(18, "OtherVolumeAtWork", "five", 0,
              [](W w) {
                Wanted wanted;
                wanted.level = VEX_RAID_LEVEL_5;
                done(create(w.arrayHandle("five"), wanted));
                done(VexVolumeInitialize(w.volumeNamed("new").volumeHandle));
              }),
    expanding(6, "NotLarger", "five", 1000),
    expanding(6, "TooLarge", "five", 2001),
    expanding(6, "OutOfAnyRange", "five", UINT64_MAX),
    expanding(6, "NothingFree", "ten", 0),
    expanding(39, "VolumeOver2Tb", "tiny", 0),
    {"VexVolumeDelete", 3, "NoVolume", [](W) { return VexVolumeDelete(kNothing); }},
    {"VexVolumeDelete", 14, "ControllerWithout",
     [](W w) { return VexVolumeDelete(w.volumeHandle("plain")); }},
    {"VexVolumeDelete", 22, "SystemVolume", [](W w) { return VexVolumeDelete(w.volumeHandle("boot")); }},
    {"VexVolumeDelete", 18, "Migrating", [](W w) { return VexVolumeDelete(w.volumeHandle("five")); },
     [](W w) { done(VexExpandVolume(w.volumeHandle("five"), 0)); }},
};

}  // namespace

std::vector<RefusalRow> volumeRefusals() { return kRows; }
