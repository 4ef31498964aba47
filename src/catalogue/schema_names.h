#ifndef MIRN_CATALOGUE_SCHEMA_NAMES_H
#define MIRN_CATALOGUE_SCHEMA_NAMES_H

/// The names of the schemas of what routes answer.
namespace schemas {

constexpr wchar_t kArray[] = L"Array";
constexpr wchar_t kArrayCacheChange[] = L"ArrayCacheChange";
constexpr wchar_t kArrayDisks[] = L"ArrayDisks";
constexpr wchar_t kConfig[] = L"Config";
constexpr wchar_t kController[] = L"Controller";
constexpr wchar_t kControllerSwitch[] = L"ControllerSwitch";
constexpr wchar_t kDevice[] = L"EndDevice";
constexpr wchar_t kDiskChange[] = L"DiskChange";
constexpr wchar_t kEvent[] = L"Event";
constexpr wchar_t kPort[] = L"Port";
constexpr wchar_t kRaid[] = L"Raid";
constexpr wchar_t kState[] = L"State";
constexpr wchar_t kVersion[] = L"Version";
constexpr wchar_t kVolume[] = L"Volume";
constexpr wchar_t kVolumeChange[] = L"VolumeChange";
constexpr wchar_t kVolumeName[] = L"VolumeName";
constexpr wchar_t kVolumeStateChange[] = L"VolumeStateChange";

}  // namespace schemas

#endif
