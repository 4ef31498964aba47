#include "event_records.h"

#include <utility>

#include "event_time.h"
#include "event_words.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

namespace mirn_events {

namespace {

constexpr wchar_t kCreationTime[] = L"creation_time";
constexpr wchar_t kSeverity[] = L"severity";
constexpr wchar_t kEventType[] = L"event_type";
constexpr wchar_t kEventSource[] = L"event_source";
constexpr wchar_t kEventSourceName[] = L"event_source_name";
constexpr wchar_t kDescription[] = L"description";

struct SeverityWord : field::kinds::ByValue {
  static void put(PublishedForm& form, const wchar_t* key, EventSeverity value) {
    form.text(key, toText(value));
  }
  static void describe(ServiceObject& schema) {
    field::kinds::describeWords(
        schema, {toText(EventSeverity::INFO), toText(EventSeverity::WARNING), toText(EventSeverity::ERROR)});
  }
};

struct EventForm {
  std::wstring creationTime;
  EventSeverity severity;
  std::wstring type;

  template <class Walk>
  static constexpr void fields(Walk& walk) {
    using namespace field;
    walk(text<&EventForm::creationTime>(kCreationTime,
                                        L"When it was seen, in local time; empty when unknown."));
    walk(of<SeverityWord, &EventForm::severity>(kSeverity, L"How grave it is."));
    walk(text<&EventForm::type>(kEventType, L"What happened."));
  }
};

struct SourcedEventForm : EventForm {
  std::wstring source;
  std::wstring sourceName;
  std::wstring description;

  template <class Walk>
  static constexpr void fields(Walk& walk) {
    using namespace field;
    EventForm::fields(walk);
    walk(text<&SourcedEventForm::source>(kEventSource, L"DISK or VOLUME."));
    walk(text<&SourcedEventForm::sourceName>(kEventSourceName, L"What it happened to, by its name."));
    walk(text<&SourcedEventForm::description>(kDescription, L"The whole story in a sentence."));
  }
};

}  // namespace

ServiceObject base_event::toServiceObject() const {
  return field::formOf<EventForm>(EventForm{eventTimeText(m_creationTime), m_severity, getTypeName()});
}

ServiceObject base_event::formOf(std::wstring source, std::wstring sourceName,
                                 std::wstring description) const {
  const SourcedEventForm form{
      {eventTimeText(m_creationTime), m_severity, getTypeName()},
      std::move(source),
      std::move(sourceName),
      std::move(description),
  };
  return field::formOf<SourcedEventForm>(form);
}

ServiceObject eventSchema() { return field::schemaOf<SourcedEventForm>(); }

disk_event::disk_event(EventSeverity severity, DiskEventType type, EndDevice device)
    : base_event(severity, static_cast<std::int32_t>(type)), m_device(std::move(device)) {}

ServiceObject disk_event::toServiceObject() const {
  const auto name = diskSourceName(m_device.disk().type, m_device.serialNumber());
  return formOf(kDiskSource, name, diskSentence(name, m_device.address(), diskType()));
}

std::wstring disk_event::getTypeName() const { return typeName(diskType()); }

std::wstring disk_event::getDescription() const { return descriptionText(diskType()); }

EventSummary disk_event::summary() const { return EventSummary::ofDisk(severity(), diskType(), m_device); }

volume_event::volume_event(EventSeverity severity, VolumeEventType type, Volume volume,
                           const VolumeStates& states)
    : base_event(severity, static_cast<std::int32_t>(type)), m_volume(std::move(volume)), m_states(states) {}

ServiceObject volume_event::toServiceObject() const {
  return formOf(kVolumeSource, m_volume.name(), volumeSentence(m_volume.name(), volumeType()));
}

std::wstring volume_event::getTypeName() const { return typeName(volumeType()); }

std::wstring volume_event::getDescription() const { return descriptionText(volumeType()); }

EventSummary volume_event::summary() const {
  return EventSummary::ofVolume(severity(), volumeType(), m_volume, m_states);
}

}  // namespace mirn_events
