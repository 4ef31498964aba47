#ifndef MIRN_EVENTS_EVENT_WORDS_H
#define MIRN_EVENTS_EVENT_WORDS_H

#include <string>

#include "enumerations.h"
#include "event_types.h"

/// How an event speaks of its object.

constexpr wchar_t kDiskSource[] = L"DISK";
constexpr wchar_t kVolumeSource[] = L"VOLUME";

std::wstring diskSourceName(DiskType type, const std::wstring& serialNumber);

/// Whole sentences, without a full stop. `name` is that of the source.
std::wstring diskSentence(const std::wstring& name, const std::wstring& address, DiskEventType type);
std::wstring volumeSentence(const std::wstring& name, VolumeEventType type);

#endif
