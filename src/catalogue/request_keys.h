#ifndef MIRN_CATALOGUE_REQUEST_KEYS_H
#define MIRN_CATALOGUE_REQUEST_KEYS_H

#include "published_keys.h"

/// The keys of request bodies, query parameters and answers, beside those that the model publishes.
namespace keys {

constexpr wchar_t kAction[] = L"action";
constexpr wchar_t kDescription[] = L"description";
constexpr wchar_t kDiskId[] = L"diskId";
constexpr wchar_t kDisks[] = L"disks";
constexpr wchar_t kInProgress[] = L"inProgress";
constexpr wchar_t kMax[] = L"max";
constexpr wchar_t kMin[] = L"min";
constexpr wchar_t kObjectId[] = L"objectID";
constexpr wchar_t kObjectName[] = L"objectName";
constexpr wchar_t kObjectType[] = L"objectType";
constexpr wchar_t kRange[] = L"range";
constexpr wchar_t kRepair[] = L"repair";
constexpr wchar_t kSize[] = L"size";
constexpr wchar_t kSource[] = L"source";
constexpr wchar_t kTime[] = L"time";
constexpr wchar_t kValue[] = L"value";
constexpr wchar_t kVolumeId[] = L"volumeId";

}  // namespace keys

#endif
