#include "simulator/refusal_rows.h"

namespace {

using W = const Workbench&;
using Wish = std::function<Wanted(W)>;

/// The same wish put to the three actions that take a write-hole policy: they judge it alike.
struct RwhCondition {
  VEX_STATUS status;
  const char* condition;
  std::uint32_t policy;
  const char* drive;  ///< id of a device, null for none
};

const RwhCondition kRwhConditions[] = {
    {28, "UnknownPolicy", 3, nullptr},
    {43, "NoDrive", VEX_RWH_POLICY_JOURNALING_DRIVE, nullptr},
    {43, "DriveNoDisk", VEX_RWH_POLICY_JOURNALING_DRIVE, "optical"},
    {43, "DriveIsAMember", VEX_RWH_POLICY_JOURNALING_DRIVE, "a2"},
    {38, "DriveOnAnotherController", VEX_RWH_POLICY_JOURNALING_DRIVE, "c0"},
    {29, "DriveIsX8", VEX_RWH_POLICY_JOURNALING_DRIVE, "x8"},
    {29, "DriveUnsupported", VEX_RWH_POLICY_JOURNALING_DRIVE, "odd"},
    {34, "DriveHasOtherSectors", VEX_RWH_POLICY_JOURNALING_DRIVE, "sectors"},
    {18, "DriveIsInAnotherArray", VEX_RWH_POLICY_JOURNALING_DRIVE, "a0"},
    {37, "DriveTooSmall", VEX_RWH_POLICY_JOURNALING_DRIVE, "a7"},
};

Wanted journaled(W w, const RwhCondition& row) {
  Wanted wanted;
  wanted.level = VEX_RAID_LEVEL_5;
  wanted.rwh = row.policy;
  wanted.drive = row.drive == nullptr ? 0 : w.diskHandle(row.drive);
  return wanted;
}

std::vector<RefusalRow> rwhRows() {
  std::vector<RefusalRow> rows;
  for (const RwhCondition& row : kRwhConditions) {
    rows.push_back({"VexVolumeSetRwhPolicy", row.status, row.condition, [row](W w) {
                      const Wanted wanted = journaled(w, row);
                      return VexVolumeSetRwhPolicy(w.volumeHandle("five"), wanted.drive, wanted.rwh);
                    }});
    rows.push_back({"VexVolumeCreate", row.status, row.condition,
                    [row](W w) { return create(w.arrayHandle("five"), journaled(w, row)); }});
    if (row.drive != nullptr && std::string(row.drive) == "a7") continue;
    rows.push_back({"VexVolumeCreateFromDisks", row.status, row.condition, [row](W w) {
                      const bool isMember = row.drive != nullptr && std::string(row.drive) == "a2";
                      Wanted wanted = journaled(w, row);
                      if (isMember) wanted.drive = w.diskHandle("a7");
                      return createFromDisks(w.diskHandles({"a7", "a8", "a9"}), wanted);
                    }});
  }
  return rows;
}

Wanted wish(std::uint32_t level, std::uint64_t size = 100, const char* name = "new") {
  Wanted wanted;
  wanted.level = level;
  wanted.size = size;
  wanted.name = name;
  return wanted;
}

Wanted stripWish(std::uint32_t strip) {
  Wanted wanted;
  wanted.strip = strip;
  return wanted;
}

Wanted fullWish() {
  Wanted wanted;
  wanted.level = VEX_RAID_LEVEL_10;
  wanted.strip = VEX_STRIP_SIZE_64KB;
  wanted.size = 0;
  return wanted;
}

Wanted rwhWish(std::uint32_t level, std::uint32_t policy) {
  Wanted wanted;
  wanted.level = level;
  wanted.rwh = policy;
  return wanted;
}

RefusalRow inArray(
    VEX_STATUS status, const char* condition, const char* array, const Wanted& wanted,
    RefusalRow::Arrange arrange = [](W) {}) {
  return {"VexVolumeCreate", status, condition, [=](W w) { return create(w.arrayHandle(array), wanted); },
          std::move(arrange)};
}

RefusalRow fromDisks(
    VEX_STATUS status, const char* condition, std::vector<const char*> disks, const Wanted& wanted,
    const char* source = nullptr, RefusalRow::Arrange arrange = [](W) {}) {
  return {"VexVolumeCreateFromDisks", status, condition,
          [=](W w) {
            std::vector<VEX_HANDLE> handles;
            for (const char* const id : disks) handles.push_back(w.diskHandle(id));
            return createFromDisks(handles, wanted, source == nullptr ? 0 : w.diskHandle(source));
          },
          std::move(arrange)};
}

constexpr std::uint32_t kRaid0 = VEX_RAID_LEVEL_0;
constexpr std::uint32_t kRaid1 = VEX_RAID_LEVEL_1;
constexpr std::uint32_t kRaid5 = VEX_RAID_LEVEL_5;

void makeSixthVolume(W w) { done(create(w.arrayHandle("five"), wish(kRaid0))); }

void makeX8Array(W w) {
  done(VexVolumeDelete(w.volumeHandle("stripe")));
  done(createFromDisks(w.diskHandles({"x8", "other x8"}), wish(kRaid0, 100, "x8")));
}

void spareAllFree(W w) {
  for (const char* const id : {"journal", "large", "sectors"}) done(VexDiskMarkAsSpare(w.diskHandle(id), 0));
}

const std::vector<RefusalRow> kArrayRows = {
    {"VexVolumeCreate", 3, "NoArray", [](W) { return create(kNothing, Wanted()); }},
    {"VexVolumeCreate", 3, "NoDrive",
     [](W w) {
       Wanted wanted = rwhWish(kRaid5, VEX_RWH_POLICY_JOURNALING_DRIVE);
       wanted.drive = kNothing;
       return create(w.arrayHandle("five"), wanted);
     }},
    inArray(14, "RaidSwitchedOff", "asleep", wish(kRaid0)),
    inArray(5, "NoName", "five", wish(kRaid0, 100, "")),
    inArray(5, "NameWithoutEnd", "five", wish(kRaid0, 100, "seventeen letters")),
    inArray(40, "NameTaken", "five", wish(kRaid0, 100, "mirror")),
    inArray(7, "NoLevel", "five", wish(0)),
    inArray(7, "InexpressibleLevel", "five", wish(VEX_RAID_LEVEL_INEXPRESSIBLE)),
    inArray(27, "LevelUnknownToTheEngine", "tiny", wish(kRaid5)),
    inArray(31, "OtherNumberOfDisks", "five", wish(kRaid1)),
    inArray(24, "ArrayFull", "mirror", wish(kRaid0, 100, "third"),
            [](W w) { done(create(w.arrayHandle("mirror"), Wanted())); }),
    inArray(24, "ControllerFull", "mirror", wish(kRaid0, 100, "seventh"), makeSixthVolume),
    inArray(4, "StripOfAnotherLevel", "five", stripWish(VEX_STRIP_SIZE_4KB)),
    inArray(4, "NoStrip", "five", stripWish(0)),
    inArray(18, "AtWork", "five", wish(kRaid0),
            [](W w) { done(VexVolumeVerify(w.volumeHandle("five"), 0)); }),
    inArray(18, "MemberLost", "five", wish(kRaid0), pulled("a2")),
    {"VexVolumeCreate", 29, "X8Members",
     [](W w) { return create(w.volumeNamed("x8").arrayHandle, wish(kRaid1)); }, makeX8Array},
    inArray(28, "PolicyUnknownToTheEngine", "tiny", rwhWish(kRaid0, VEX_RWH_POLICY_DISTRIBUTED)),
    inArray(27, "PolicyOfRaid5Only", "five", rwhWish(kRaid0, VEX_RWH_POLICY_DISTRIBUTED)),
    inArray(6, "TooLarge", "five", wish(kRaid0, 1501)),
    inArray(6, "NothingFree", "ten", fullWish()),
    inArray(39, "VolumeOver2Tb", "tiny", wish(kRaid0, 0)),
};

const std::vector<RefusalRow> kDiskRows = {
    {"VexVolumeCreateFromDisks", 2, "NoPlaceForTheHandle",
     [](W w) {
       const std::vector<VEX_HANDLE> disks = w.diskHandles({"a7", "a8"});
       VEX_CREATE_FROM_DISKS_PARAMS params = {};
       params.disks = disks.data();
       params.diskCount = 2;
       fillParams(params, Wanted());
       return VexVolumeCreateFromDisks(params, nullptr);
     }},
    {"VexVolumeCreateFromDisks", 2, "NoList",
     [](W) {
       VEX_CREATE_FROM_DISKS_PARAMS params = {};
       params.diskCount = 2;
       fillParams(params, Wanted());
       VEX_HANDLE volume = 0;
       return VexVolumeCreateFromDisks(params, &volume);
     }},
    {"VexVolumeCreateFromDisks", 3, "NoDevice", [](W) { return createFromDisks({kNothing}, Wanted()); }},
    {"VexVolumeCreateFromDisks", 3, "NoDrive",
     [](W w) {
       Wanted wanted = rwhWish(kRaid5, VEX_RWH_POLICY_JOURNALING_DRIVE);
       wanted.drive = kNothing;
       return createFromDisks(w.diskHandles({"a7", "a8", "a9"}), wanted);
     }},
    fromDisks(13, "NoDisks", {}, wish(kRaid0)),
    fromDisks(43, "NoDisk", {"a7", "optical"}, wish(kRaid0)),
    fromDisks(43, "DiskTwice", {"a7", "a7"}, wish(kRaid0)),
    fromDisks(14, "ControllerWithout", {"b2", "b3"}, wish(kRaid0)),
    fromDisks(14, "NoEngine", {"c0", "c1"}, wish(kRaid0)),
    fromDisks(14, "RaidSwitchedOff", {"e2", "e3"}, wish(kRaid0)),
    fromDisks(14, "EngineWithoutSources", {"d4", "d5"}, wish(kRaid0), "d4"),
    fromDisks(5, "NoName", {"a7", "a8"}, wish(kRaid0, 100, "")),
    fromDisks(40, "NameTaken", {"a7", "a8"}, wish(kRaid0, 100, "mirror")),
    fromDisks(7, "NoLevel", {"a7", "a8"}, wish(0)),
    fromDisks(27, "LevelUnknownToTheEngine", {"d4", "d5"}, wish(kRaid5)),
    fromDisks(24, "TooManyForTheArray", {"a7", "a8", "a9", "large", "journal", "small", "smart"},
              wish(kRaid0)),
    fromDisks(31, "OtherNumberOfDisks", {"a7", "a8", "a9"}, wish(kRaid1)),
    fromDisks(24, "ControllerFull", {"a7", "a8"}, wish(kRaid0, 100, "seventh"), nullptr, makeSixthVolume),
    fromDisks(4, "StripOfAnotherLevel", {"a7", "a8"}, stripWish(VEX_STRIP_SIZE_4KB)),
    fromDisks(43, "SourceNotAmongThem", {"a7", "a8"}, wish(kRaid0), "a9"),
    fromDisks(38, "OtherController", {"a7", "c0"}, wish(kRaid0)),
    fromDisks(29, "X8", {"x8", "other x8"}, wish(kRaid1)),
    fromDisks(29, "Unsupported", {"a7", "odd"}, wish(kRaid0)),
    fromDisks(29, "DiskOver2Tb", {"d4", "d6"}, wish(kRaid0)),
    fromDisks(35, "ForeignDrive", {"d4", "d3"}, stripWish(VEX_STRIP_SIZE_128KB)),
    fromDisks(34, "OtherSectors", {"a7", "sectors"}, wish(kRaid0)),
    fromDisks(18, "MemberOfAnother", {"a7", "a0"}, wish(kRaid0)),
    fromDisks(18, "SystemDisk", {"a7", "system"}, wish(kRaid0)),
    fromDisks(37, "SmallerThanTheSource", {"a7", "large"}, wish(kRaid0, 0), "large"),
    fromDisks(24, "TooManyForTheEngine", {"a7", "a8", "a9"}, wish(kRaid0), nullptr, spareAllFree),
    fromDisks(28, "PolicyUnknownToTheEngine", {"d4", "d5"}, rwhWish(kRaid0, VEX_RWH_POLICY_DISTRIBUTED)),
    fromDisks(27, "PolicyOfRaid5Only", {"a7", "a8"}, rwhWish(kRaid0, VEX_RWH_POLICY_DISTRIBUTED)),
    fromDisks(6, "TooLarge", {"a7", "a8"}, wish(kRaid0, 2001)),
    fromDisks(6, "SmallerThanTheData", {"a7", "a8"}, wish(kRaid0, 999), "a7"),
    fromDisks(39, "VolumeOver2Tb", {"d4", "d5"}, wish(kRaid0, 0)),
};

const std::vector<RefusalRow> kPolicyRows = {
    {"VexVolumeSetRwhPolicy", 3, "NoVolume", [](W) { return VexVolumeSetRwhPolicy(kNothing, 0, 0); }},
    {"VexVolumeSetRwhPolicy", 3, "NoDrive",
     [](W w) { return VexVolumeSetRwhPolicy(w.volumeHandle("five"), kNothing, 2); }},
    {"VexVolumeSetRwhPolicy", 28, "PolicyUnknownToTheEngine",
     [](W w) { return VexVolumeSetRwhPolicy(w.volumeHandle("tiny"), 0, 1); }},
    {"VexVolumeSetRwhPolicy", 27, "PolicyOfRaid5Only",
     [](W w) { return VexVolumeSetRwhPolicy(w.volumeHandle("ten"), 0, 1); }},
    {"VexVolumeSetRwhPolicy", 18, "Failed",
     [](W w) { return VexVolumeSetRwhPolicy(w.volumeHandle("five"), 0, 1); },
     [](W) {
       done(VexSimPullDisk("a2"));
       done(VexSimPullDisk("a3"));
     }},
};

}  // namespace

std::vector<RefusalRow> creationRefusals() {
  std::vector<RefusalRow> all = rwhRows();
  for (const auto* const rows : {&kArrayRows, &kDiskRows, &kPolicyRows}) {
    all.insert(all.end(), rows->begin(), rows->end());
  }
  return all;
}
