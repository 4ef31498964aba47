#include "event_records.h"

#include <utility>

#include "event_time.h"

using ovra::data_transfer::ServiceObject;

namespace mirn_events {

namespace {

constexpr wchar_t kCreationTime[] = L"creation_time";
constexpr wchar_t kSeverity[] = L"severity";
constexpr wchar_t kEventType[] = L"event_type";
constexpr wchar_t kEventSource[] = L"event_source";
constexpr wchar_t kEventSourceName[] = L"event_source_name";
constexpr wchar_t kDescription[] = L"description";

constexpr wchar_t kDiskSource[] = L"DISK";
constexpr wchar_t kVolumeSource[] = L"VOLUME";
constexpr wchar_t kAt[] = L" at ";

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
  const auto name = toText(m_device.disk().type) + L" " + m_device.serialNumber();
  auto object = base_event::toServiceObject();
  object.member(kEventSource) = std::wstring(kDiskSource);
  object.member(kEventSourceName) = name;
  object.member(kDescription) = name + kAt + m_device.address() + L" " + getDescription();
  return object;
}

std::wstring disk_event::getTypeName() const { return typeName(static_cast<DiskEventType>(type())); }

std::wstring disk_event::getDescription() const {
  return descriptionText(static_cast<DiskEventType>(type()));
}

volume_event::volume_event(EventSeverity severity, VolumeEventType type, Volume volume)
    : base_event(severity, static_cast<std::int32_t>(type)), m_volume(std::move(volume)) {}

ServiceObject volume_event::toServiceObject() const {
  auto object = base_event::toServiceObject();
  object.member(kEventSource) = std::wstring(kVolumeSource);
  object.member(kEventSourceName) = m_volume.name();
  object.member(kDescription) = m_volume.name() + L" " + getDescription();
  return object;
}

std::wstring volume_event::getTypeName() const { return typeName(static_cast<VolumeEventType>(type())); }

std::wstring volume_event::getDescription() const {
  return descriptionText(static_cast<VolumeEventType>(type()));
}

}  // namespace mirn_events
