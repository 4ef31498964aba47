#ifndef MIRN_EVENTS_EVENT_SUMMARY_H
#define MIRN_EVENTS_EVENT_SUMMARY_H

#include <boost/optional.hpp>
#include <cstddef>
#include <cstdint>
#include <string>

#include "enddevice.h"
#include "event_types.h"
#include "ServiceObject.h"
#include "volume.h"

/// The states on both sides of a volume's change.
struct VolumeStates {
  boost::optional<VolumeState> before;  ///< None of a new volume.
  boost::optional<VolumeState> after;   ///< None of a deleted one.
};

/// What remains of an event when its object is left out: some 250 bytes, so that tens of thousands can be
/// kept. Texts are built when asked for.
class EventSummary {
 public:
  static EventSummary ofDisk(EventSeverity severity, DiskEventType type, const EndDevice& device);
  static EventSummary ofVolume(EventSeverity severity, VolumeEventType type, const Volume& volume,
                               const VolumeStates& states);

  std::uint64_t number() const { return m_number; }

  /// Given by the journal: the number, and ticks since the Unix epoch.
  void stamp(std::uint64_t number, std::int64_t ticks);

  /// An object with `number` and `moment` (unsigned, milliseconds since 1970, UTC), `kind`, `severity`,
  /// `description`, `objectType`, `objectId`, `objectName` (texts), and of volumes `oldState` and `newState`
  /// (texts), where there was an old one and is a new one.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  EventSummary(EventSeverity severity, std::int32_t type, const std::wstring& id, const std::wstring& name,
               const std::wstring& address);

  std::wstring id() const;
  std::wstring name() const;
  std::wstring address() const;

  std::uint64_t m_number = 0;
  std::uint64_t m_moment = 0;
  // One after another, a code unit each: wide text has four bytes for each on most systems.
  std::u16string m_texts;
  std::size_t m_idSize;
  std::size_t m_nameSize;
  EventSeverity m_severity;
  std::int32_t m_type;
  boost::optional<DiskType> m_diskType;  ///< None of a volume.
  VolumeStates m_states;
};

#endif
