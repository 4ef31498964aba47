#include "event_summary.h"

#include "event_words.h"
#include "published_form.h"
#include "tick_clock.h"

using ovra::data_transfer::ServiceObject;

namespace {

constexpr wchar_t kNumber[] = L"number";
constexpr wchar_t kMoment[] = L"moment";
constexpr wchar_t kKind[] = L"kind";
constexpr wchar_t kSeverity[] = L"severity";
constexpr wchar_t kDescription[] = L"description";
constexpr wchar_t kObjectType[] = L"objectType";
constexpr wchar_t kObjectId[] = L"objectId";
constexpr wchar_t kObjectName[] = L"objectName";
constexpr wchar_t kOldState[] = L"oldState";
constexpr wchar_t kNewState[] = L"newState";

void append(std::u16string& packed, const std::wstring& text) {
  for (const wchar_t unit : text) packed.push_back(static_cast<char16_t>(unit));
}

std::wstring unpacked(const std::u16string& packed, std::size_t from, std::size_t size) {
  const auto first = packed.begin() + static_cast<std::ptrdiff_t>(from);
  return {first, first + static_cast<std::ptrdiff_t>(size)};
}

}  // namespace

EventSummary::EventSummary(EventSeverity severity, std::int32_t type, const std::wstring& id,
                           const std::wstring& name, const std::wstring& address)
    : m_idSize(id.size()), m_nameSize(name.size()), m_severity(severity), m_type(type) {
  m_texts.reserve(id.size() + name.size() + address.size());
  append(m_texts, id);
  append(m_texts, name);
  append(m_texts, address);
}

EventSummary EventSummary::ofDisk(EventSeverity severity, DiskEventType type, const EndDevice& device) {
  EventSummary summary(severity, static_cast<std::int32_t>(type), device.id(), device.serialNumber(),
                       device.address());
  summary.m_diskType = device.disk().type;
  return summary;
}

EventSummary EventSummary::ofVolume(EventSeverity severity, VolumeEventType type, const Volume& volume,
                                    const VolumeStates& states) {
  EventSummary summary(severity, static_cast<std::int32_t>(type), volume.id(), volume.name(), {});
  summary.m_states = states;
  return summary;
}

void EventSummary::stamp(std::uint64_t number, std::int64_t ticks) {
  m_number = number;
  m_moment = ticks < 0 ? 0 : static_cast<std::uint64_t>(ticks / kTicksPerMillisecond);
}

std::wstring EventSummary::id() const { return unpacked(m_texts, 0, m_idSize); }

std::wstring EventSummary::name() const {
  const std::wstring name = unpacked(m_texts, m_idSize, m_nameSize);
  return m_diskType ? diskSourceName(*m_diskType, name) : name;
}

std::wstring EventSummary::address() const {
  const std::size_t from = m_idSize + m_nameSize;
  return unpacked(m_texts, from, m_texts.size() - from);
}

ServiceObject EventSummary::toServiceObject() const {
  const std::wstring name = this->name();
  const auto ofDisk = static_cast<DiskEventType>(m_type);
  const auto ofVolume = static_cast<VolumeEventType>(m_type);
  PublishedForm form;
  form.number(kNumber, m_number)
      .number(kMoment, m_moment)
      .text(kKind, m_diskType ? typeName(ofDisk) : typeName(ofVolume))
      .text(kSeverity, toText(m_severity))
      .text(kDescription, m_diskType ? diskSentence(name, address(), ofDisk) : volumeSentence(name, ofVolume))
      .text(kObjectType, m_diskType ? kDiskSource : kVolumeSource)
      .text(kObjectId, id())
      .text(kObjectName, name);
  if (m_states.before) form.text(kOldState, toText(*m_states.before));
  if (m_states.after) form.text(kNewState, toText(*m_states.after));
  return form.take();
}
