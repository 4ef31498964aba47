#ifndef MIRN_COMMON_PUBLISHED_KEYS_H
#define MIRN_COMMON_PUBLISHED_KEYS_H

/// The keys of the model's published forms that requests and other answers use, too. The lists of fields have
/// all keys.
namespace keys {

constexpr wchar_t kArrayId[] = L"arrayId";
constexpr wchar_t kCachePolicy[] = L"cachePolicy";
constexpr wchar_t kControllerId[] = L"controllerId";
constexpr wchar_t kJournalingDriveId[] = L"journalingDriveId";
constexpr wchar_t kName[] = L"name";
constexpr wchar_t kRaidLevel[] = L"raidLevel";
constexpr wchar_t kRwhPolicy[] = L"rwhPolicy";
constexpr wchar_t kState[] = L"state";
constexpr wchar_t kStripSize[] = L"stripSize";
constexpr wchar_t kType[] = L"type";
constexpr wchar_t kUsage[] = L"usage";
constexpr wchar_t kWriteCachePolicy[] = L"writeCachePolicy";

}  // namespace keys

#endif
