#include "support/action_cases.h"

#include "support/model_samples.h"

namespace {

constexpr VEX_STATUS kInvalidState = 18;
constexpr VEX_STATUS kInternalError = 16;
constexpr char kDiskInvalidState[] = "Mirn_DISK_INVALID_STATE";
constexpr char kArrayInvalidState[] = "Mirn_ARRAY_INVALID_STATE";
constexpr char kVolumeInvalidState[] = "Mirn_VOLUME_INVALID_STATE";

constexpr std::uint64_t kSize = 0x1122334455667788;

Volume volume() { return complete<Volume>().handle(52).build(); }

EndDevice disk(VEX_HANDLE handle) {
  return complete<EndDevice>().id(std::to_wstring(handle)).handle(handle).phyHandle(handle + 10).build();
}

RwhRequest journalingOn25() { return {{L"25", 25}, RwhPolicy::RWH_JOURNALING_DRIVE}; }

std::vector<ActionCase> basicCases() {
  return {{"Rescan", [](auto& s) { s.rescan(); }, "VexRescan()"}};
}

std::vector<ActionCase> diskCases() {
  return {
      {"ClearMetadata", [](auto& s) { s.clearMetadata(23); }, "VexDiskClearMetadata(23)", kInvalidState,
       kDiskInvalidState},
      {"MarkAsSpare", [](auto& s) { s.markAsSpare(23, 41); }, "VexDiskMarkAsSpare(23, 41)", kInvalidState,
       kDiskInvalidState},
      {"UnmarkAsSpare", [](auto& s) { s.unmarkAsSpare(23); }, "VexDiskUnmarkAsSpare(23)", kInvalidState,
       kDiskInvalidState},
      {"MarkDiskAsNormal", [](auto& s) { s.markAsNormal(VEX_HANDLE{23}); }, "VexDiskMarkAsNormal(23)",
       kInvalidState, kDiskInvalidState},
      {"AssignStoragePool", [](auto& s) { s.assignStoragePool(23, 255); },
       "VexDiskAssignStoragePool(23, 255)"},
      {"Unlock", [](auto& s) { s.unlock(23, UserLevel::kMaster, L"s\u00e9same"); },
       "VexDiskUnlock(23, {" + fieldBytes("s\303\251same", 32) + u32(1) + "})"},
      {"ResetSmartEvent", [](auto& s) { s.resetSmartEvent(23); }, "VexDiskResetSmartEvent(23)"},
      {"RemoveDisk", [](auto& s) { s.removeDisk(disk(23)); }, "VexPhyRemove(33, 1)"},
  };
}

std::vector<ActionCase> arrayCases() {
  return {
      {"SetWriteCacheState", [](auto& s) { s.setWriteCacheState(41, EnableState::ENABLED); },
       "VexArraySetWriteCacheState(41, 1)"},
      {"AddDisks",
       [](auto& s) {
         s.addDisks(41, {disk(24), disk(23)});
       },
       "VexAddDisksToArray(41, [24, 23], 2, 0)", kInternalError, kArrayInvalidState},
  };
}

std::vector<ActionCase> volumeStateCases() {
  return {
      {"MarkVolumeAsNormal", [](auto& s) { s.markAsNormal(volume()); }, "VexVolumeMarkAsNormal(52)",
       kInvalidState, kVolumeInvalidState},
      {"Rebuild", [](auto& s) { s.rebuild(volume(), disk(23)); }, "VexVolumeRebuild(52, 23)", kInvalidState,
       kVolumeInvalidState},
      {"Initialize", [](auto& s) { s.initialize(volume()); }, "VexVolumeInitialize(52)", kInvalidState,
       kVolumeInvalidState},
      {"Verify", [](auto& s) { s.verify(volume(), false); }, "VexVolumeVerify(52, 0)", kInvalidState,
       kVolumeInvalidState},
      {"CancelVerify", [](auto& s) { s.cancelVerify(volume()); }, "VexVolumeCancelVerify(52)", kInvalidState,
       kVolumeInvalidState},
  };
}

std::vector<ActionCase> volumeChangeCases() {
  return {
      {"Rename", [](auto& s) { s.rename(volume(), L"Fotos"); }, "VexVolumeRename(52, \"Fotos\")"},
      {"Expand", [](auto& s) { s.expand(volume(), kSize); }, "VexExpandVolume(52, 1234605616436508552)"},
      {"SetCachePolicy", [](auto& s) { s.setCachePolicy(volume(), CachePolicy::WRITE_BACK); },
       "VexVolumeSetCachePolicy(52, 3)"},
      {"ModifyRaidLevel",
       [](auto& s) {
         s.modifyRaidLevel(volume(), StripSize::SIZE_128KB, RaidLevel::RAID_1, kSize, {disk(24), disk(23)});
       },
       "VexRaidLevelModify(52, {" + u32(0x40) + u32(2) + u64(kSize) + zeros(8) + u32(2) + zeros(4) +
           "; [24, 23]})"},
      {"DeleteVolume", [](auto& s) { s.deleteVolume(volume()); }, "VexVolumeDelete(52)", kInvalidState,
       kVolumeInvalidState},
  };
}

std::vector<ActionCase> volumeCreationCases() {
  return {
      {"CreateVolume",
       [](auto& s) {
         s.createVolume(complete<Array>().handle(41).build(), L"Fotos", StripSize::SIZE_16KB,
                        RaidLevel::RAID_5, kSize, journalingOn25());
       },
       "VexVolumeCreate({" + u32(41) + fieldBytes("Fotos", 17) + zeros(3) + u32(0x8) + u32(8) + u64(kSize) +
           u32(2) + u32(25) + "})"},
      {"CreateVolumeFromDisks",
       [](auto& s) {
         s.createVolumeFromDisks({disk(24), disk(23)}, L"Fotos", StripSize::SIZE_16KB, RaidLevel::RAID_10,
                                 kSize, L"23", journalingOn25());
       },
       "VexVolumeCreateFromDisks({" + zeros(8) + u32(2) + u32(23) + fieldBytes("Fotos", 17) + zeros(3) +
           u32(0x8) + u32(4) + zeros(4) + u64(kSize) + u32(2) + u32(25) + "; [24, 23]}, out)"},
      {"SetRwhPolicy", [](auto& s) { s.setRwhPolicy(volume(), journalingOn25()); },
       "VexVolumeSetRwhPolicy(52, 25, 2)"},
  };
}

std::vector<ActionCase> controllerAndPortCases() {
  return {
      {"SetReadPatrolState", [](auto& s) { s.setReadPatrolState(11, EnableState::ENABLED); },
       "VexReadPatrolSetState(11, 1)"},
      {"SetRohiState", [](auto& s) { s.setRohiState(11, EnableState::ENABLED); }, "VexROHISetState(11, 1)"},
      {"Locate", [](auto& s) { s.locate(complete<Port>().handle(63).build(), EnableState::ENABLED); },
       "VexPortLocate(63, 1)"},
  };
}

}  // namespace

std::vector<ActionCase> actionCases() {
  std::vector<ActionCase> all;
  for (const auto& cases : {basicCases(), diskCases(), arrayCases(), volumeStateCases(), volumeChangeCases(),
                            volumeCreationCases(), controllerAndPortCases()}) {
    all.insert(all.end(), cases.begin(), cases.end());
  }
  return all;
}

std::string u64(std::uint64_t value) {
  return u32(static_cast<std::uint32_t>(value)) + u32(static_cast<std::uint32_t>(value >> 32));
}

std::string u32(std::uint32_t value) {
  std::string bytes;
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift);
  return fieldBytes(bytes, sizeof value);
}

std::string zeros(std::size_t count) { return fieldBytes("", count); }

std::string fieldBytes(const std::string& text, std::size_t size) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    hex += {kDigits[byte >> 4], kDigits[byte & 0xF]};
  }
  hex.resize(2 * size, '0');
  return hex;
}
