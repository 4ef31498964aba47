#include "event_records.h"

#include <utility>

#include "event_time.h"
#include "event_words.h"

using ovra::data_transfer::ServiceObject;

namespace mirn_events {

namespace {

constexpr wchar_t kCreationTime[] = L"creation_time";
constexpr wchar_t kSeverity[] = L"severity";
constexpr wchar_t kEventType[] = L"event_type";
constexpr wchar_t kEventSource[] = L"event_source";
constexpr wchar_t kEventSourceName[] = L"event_source_name";
constexpr wchar_t kDescription[] = L"description";

}  // namespace

ServiceObject base_event::toServiceObject() const {
  ServiceObject object;
  object.member(kCreationTime) = eventTimeText(m_creationTime);
  object.member(kSeverity) = toText(m_severity);
  object.member(kEventType) = getTypeName();
  return object;
}

disk_event::disk_event(EventSeverity severity, DiskEventType type, EndDevice device)
    : base_event(severity, static_cast<std::int32_t>(type)), m_device(std::move(device)) {}

ServiceObject disk_event::toServiceObject() const {
  const auto name = diskSourceName(m_device.disk().type, m_device.serialNumber());
  auto object = base_event::toServiceObject();
  object.member(kEventSource) = std::wstring(kDiskSource);
  object.member(kEventSourceName) = name;
  object.member(kDescription) = diskSentence(name, m_device.address(), diskType());
  return object;
}

std::wstring disk_event::getTypeName() const { return typeName(diskType()); }

std::wstring disk_event::getDescription() const { return descriptionText(diskType()); }

EventSummary disk_event::summary() const { return EventSummary::ofDisk(severity(), diskType(), m_device); }

volume_event::volume_event(EventSeverity severity, VolumeEventType type, Volume volume,
                           const VolumeStates& states)
    : base_event(severity, static_cast<std::int32_t>(type)), m_volume(std::move(volume)), m_states(states) {}

ServiceObject volume_event::toServiceObject() const {
  auto object = base_event::toServiceObject();
  object.member(kEventSource) = std::wstring(kVolumeSource);
  object.member(kEventSourceName) = m_volume.name();
  object.member(kDescription) = volumeSentence(m_volume.name(), volumeType());
  return object;
}

std::wstring volume_event::getTypeName() const { return typeName(volumeType()); }

std::wstring volume_event::getDescription() const { return descriptionText(volumeType()); }

EventSummary volume_event::summary() const {
  return EventSummary::ofVolume(severity(), volumeType(), m_volume, m_states);
}

}  // namespace mirn_events
