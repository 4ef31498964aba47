#include "module/object_ids.h"
#include "module/varied_requests.h"
#include "scripted_library/small_machine.h"

using namespace small_machine;
using namespace varied;

namespace {

using Requests = std::vector<VariedRequest>;

const std::wstring kVolumes = L"mirn/volumes";

constexpr const char* kLevels[] = {"RAID_0", "RAID_1", "RAID_5", "RAID_10", "RAID_6", "RAID_X"};
constexpr const char* kStripSizes[] = {"SIZE_2KB",  "SIZE_4KB",   "SIZE_8KB",    "SIZE_16KB",  "SIZE_32KB",
                                       "SIZE_64KB", "SIZE_128KB", "SIZE_256KB",  "SIZE_512KB", "SIZE_1MB",
                                       "SIZE_2MB",  "SIZE_4MB",   "SIZE_8MB",    "SIZE_16MB",  "SIZE_32MB",
                                       "SIZE_64MB", "N/A",        "SIZE_UNKNOWN"};
constexpr const char* kSizes[] = {
    "0", "1", "1024", "4294967296", "9223372036854775807", "9223372036854775808", "-1"};
// The shortest and the longest, every character that is allowed, and what is not.
constexpr const char* kNames[] = {"A",
                                  "ABCDEFGHIJKLMNOP",
                                  "ABCDEFGHIJKLMNOPQ",
                                  "a b !\"#$%&'()*+,",
                                  "-./0123456789:;<",
                                  "=>?@[]^_`{|}~",
                                  "back\\slash",
                                  "Caf\303\251",
                                  "\346\227\245\346\234\254",
                                  "\360\237\222\276",
                                  "System"};

std::string named(const std::string& what, const std::string& name) { return what + " \"" + name + '"'; }

/// A body with some of its fields set, or set again.
ServiceObject with(ServiceObject object, std::initializer_list<BodyField> fields) {
  for (const BodyField& field : fields) set(object, field);
  return object;
}

ServiceObject inArray(VEX_HANDLE array, const char* level) {
  return body({{"source", "ARRAY"},
               idField("arrayId", idOf("array", array)),
               {"name", "Fotos"},
               {"raidLevel", level},
               {"size", "0"}});
}

ServiceObject fromDisks(const std::vector<VEX_HANDLE>& disks, const char* level) {
  return body({{"source", "DISK"},
               {"disks", diskIds(disks)},
               {"name", "Fotos"},
               {"raidLevel", level},
               {"size", "0"}});
}

BodyField journalOn(VEX_HANDLE disk) { return idField("journalingDriveId", idOf("disk", disk)); }

/// Both ways of creation in all that they have in common: `create` is of RAID 0 where `level` does not
/// say otherwise.
template <class Create>
Requests creationsBy(const std::string& source, const Create& create) {
  Requests requests;
  const auto add = [&](const std::string& name, const ServiceObject& order) {
    requests.push_back({"Volume" + source + name, post(kVolumes, {}, order)});
  };
  for (const char* const level : kLevels) add(std::string("At") + level, create(level));
  for (const char* const strip : kStripSizes) {
    add(std::string("Of") + strip, with(create("RAID_0"), {{"stripSize", strip}}));
  }
  for (const char* const size : kSizes) {
    add(std::string("OfSize") + size, with(create("RAID_0"), {{"size", size}}));
  }
  for (const char* const name : kNames) {
    add(named("Named", name), with(create("RAID_0"), {{"name", name}}));
  }
  add("OfNoLevelWithAStrip", with(create("RAID_6"), {{"stripSize", "SIZE_64KB"}}));
  add("OfAMirrorWithAStrip", with(create("RAID_1"), {{"stripSize", "SIZE_64KB"}}));
  const ServiceObject parity = create("RAID_5");
  add("WithoutWriteHolePolicy", with(parity, {journalOn(kJournal)}));
  add("WithWriteHoleOff", with(parity, {{"rwhPolicy", "RWH_OFF"}}));
  add("WithWriteHoleDistributed", with(parity, {{"rwhPolicy", "RWH_DISTRIBUTED"}}));
  add("WithWriteHoleDistributedAndADrive",
      with(parity, {{"rwhPolicy", "RWH_DISTRIBUTED"}, journalOn(kJournal)}));
  add("WithAJournal", with(parity, {{"rwhPolicy", "RWH_JOURNALING_DRIVE"}, journalOn(kJournal)}));
  add("WithAJournalNowhere", with(parity, {{"rwhPolicy", "RWH_JOURNALING_DRIVE"}}));
  add("WithEverything", with(parity, {{"rwhPolicy", "RWH_JOURNALING_DRIVE"},
                                      journalOn(kJournal),
                                      {"stripSize", "SIZE_16KB"},
                                      {"size", "123456789012"},
                                      {"name", "ABCDEFGHIJKLMNOP"}}));
  return requests;
}

Requests creationsOfArrays() {
  Requests requests = creationsBy("InArray", [](const char* level) { return inArray(kEmptyArray, level); });
  requests.push_back({"SecondVolumeInArrayOnLyx", post(kVolumes, {}, inArray(kParityArray, "RAID_5"))});
  requests.push_back({"SecondVolumeInArrayWithASize",
                      post(kVolumes, {}, with(inArray(kParityArray, "RAID_5"), {{"size", "1"}}))});
  return requests;
}

Requests creationsOfDisks() {
  Requests requests = creationsBy("FromDisks", [](const char* level) {
    return fromDisks({kFree1, kFree2}, level);
  });
  const auto add = [&](const std::string& name, const ServiceObject& order) {
    requests.push_back({"Volume" + name, post(kVolumes, {}, order)});
  };
  const ServiceObject two = fromDisks({kFree1, kFree2}, "RAID_0");
  add("FromNoDisks", fromDisks({}, "RAID_0"));
  add("FromOneDisk", fromDisks({kFree2}, "RAID_0"));
  add("FromDisksInTheOrderGiven", fromDisks({kFree2, kJournal, kFree1}, "RAID_5"));
  add("FromOneDiskTwice", fromDisks({kFree1, kFree1}, "RAID_1"));
  add("FromLyxDisks", fromDisks({kLyxDisk3, kLyxDisk1, kLyxDisk2}, "RAID_5"));
  add("FromFourLyxDisks", fromDisks({kLyxDisk1, kLyxDisk2, kLyxDisk3, kParityMember1}, "RAID_5"));
  add("FromNoDisk", fromDisks({kNoDisk}, "RAID_0"));
  add("KeepingAFirstDisk", with(two, {idField("diskId", idOf("disk", kFree1))}));
  add("KeepingASecondDisk", with(two, {idField("diskId", idOf("disk", kFree2))}));
  add("KeepingAnotherDisk", with(two, {idField("diskId", idOf("disk", kJournal))}));
  return requests;
}

Request change(VEX_HANDLE volume, const wchar_t* what, const ServiceObject& order = {}) {
  return put(kVolumes, {idOf("volume", volume), what}, order);
}

Requests levelRequests() {
  Requests requests;
  const auto add = [&](const std::string& name, VEX_HANDLE volume, const ServiceObject& order) {
    requests.push_back({"Level" + name, change(volume, L"level", order)});
  };
  const auto to = [](const char* level) { return body({{"raidLevel", level}}); };
  const auto adding = [](const ServiceObject& order, const std::vector<VEX_HANDLE>& disks) {
    return with(order, {{"disks", diskIds(disks)}});
  };
  for (const char* const level : kLevels) {
    add(std::string("OfAStripeTo") + level, kDataVolume, to(level));
    add(std::string("OfAMirrorTo") + level, kSystemVolume, to(level));
    add(std::string("OnLyxTo") + level, kParityVolume, to(level));
  }
  for (const char* const strip : kStripSizes) {
    add(std::string("With") + strip, kDataVolume, with(to("RAID_5"), {{"stripSize", strip}}));
  }
  add("OfAMirrorWithAStrip", kSystemVolume, with(to("RAID_1"), {{"stripSize", "SIZE_64KB"}}));
  add("WithNoDisks", kDataVolume, adding(to("RAID_5"), {}));
  add("WithADisk", kDataVolume, adding(to("RAID_5"), {kFree2}));
  add("WithDisksInTheOrderGiven", kDataVolume, adding(to("RAID_10"), {kFree2, kJournal, kFree1}));
  add("OnLyxWithDisks", kParityVolume, adding(to("RAID_5"), {kLyxDisk2, kLyxDisk1}));
  add("WithAMember", kDataVolume, adding(to("RAID_5"), {kMember1}));
  return requests;
}

Requests writeHoleRequests() {
  const auto writeHole = [](const char* policy) { return body({{"rwhPolicy", policy}}); };
  const auto of = [](const ServiceObject& order) { return change(kParityVolume, L"rwh", order); };
  return {
      {"WriteHoleOff", of(writeHole("RWH_OFF"))},
      {"WriteHoleOffOfAStripe", change(kDataVolume, L"rwh", writeHole("RWH_OFF"))},
      {"WriteHoleOffWithADrive", of(with(writeHole("RWH_OFF"), {journalOn(kLyxDisk1)}))},
      {"WriteHoleDistributed", of(writeHole("RWH_DISTRIBUTED"))},
      {"WriteHoleDistributedOfAStripe", change(kDataVolume, L"rwh", writeHole("RWH_DISTRIBUTED"))},
      {"WriteHoleJournal", of(with(writeHole("RWH_JOURNALING_DRIVE"), {journalOn(kLyxDisk1)}))},
      {"WriteHoleJournalNowhere", of(writeHole("RWH_JOURNALING_DRIVE"))},
      {"WriteHoleOther", of(writeHole("OFF"))},
  };
}

Requests plainVolumeRequests() {
  const auto verify = [](std::initializer_list<BodyField> order) {
    return change(kDataVolume, L"verify", body(order));
  };
  const auto onto = [](VEX_HANDLE disk) { return body({idField("diskId", idOf("disk", disk))}); };
  Requests requests = {
      {"VolumeMarkAsNormal", change(kParityVolume, L"marknormal")},
      {"VolumeInitialize", change(kDataVolume, L"init")},
      {"VolumeRebuild", change(kParityVolume, L"rebuild", onto(kLyxDisk3))},
      {"VolumeRebuildOfAHealthyOne", change(kDataVolume, L"rebuild", onto(kFree1))},
      {"VolumeVerifyAndRepair", verify({{"action", "START"}, {"repair", true}})},
      {"VolumeVerifyOnly", verify({{"action", "START"}, {"repair", false}})},
      {"VolumeVerifyUndecided", verify({{"action", "START"}})},
      {"VolumeVerifyCancel", verify({{"action", "CANCEL"}})},
      {"VolumeDelete", remove(kVolumes, {idOf("volume", kSystemVolume)})},
  };
  for (const char* const policy : {"OFF", "WRITE_THROUGH", "WRITE_BACK", "UNKNOWN"}) {
    requests.push_back({std::string("CachePolicy") + policy,
                        change(kDataVolume, L"cachepolicy", body({{"cachePolicy", policy}}))});
  }
  for (const char* const size : kSizes) {
    requests.push_back(
        {std::string("VolumeSize") + size, change(kDataVolume, L"size", body({{"size", size}}))});
  }
  for (const char* const name : kNames) {
    requests.push_back({named("VolumeRenamed", name), change(kDataVolume, L"name", body({{"name", name}}))});
  }
  return requests;
}

Requests joined(std::initializer_list<Requests> parts) {
  Requests all;
  for (const Requests& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

}  // namespace

std::vector<VariedRequest> variedCreations() { return joined({creationsOfArrays(), creationsOfDisks()}); }

std::vector<VariedRequest> variedVolumeChanges() {
  return joined({plainVolumeRequests(), levelRequests(), writeHoleRequests()});
}
