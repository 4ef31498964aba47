#ifndef MIRN_EVENTS_EVENT_RECORDS_H
#define MIRN_EVENTS_EVENT_RECORDS_H

#include <cstdint>
#include <string>

#include "enddevice.h"
#include "event_summary.h"
#include "event_types.h"
#include "ServiceObject.h"
#include "volume.h"

class EventJournal;

namespace mirn_events {

/// One change that was seen. Made once, stamped once by the journal, and constant from then on: whoever
/// shares it may read it from any thread. All texts are built when asked for.
class base_event {
 public:
  base_event(const base_event&) = delete;
  base_event& operator=(const base_event&) = delete;
  virtual ~base_event() = default;

  /// All fields of the event, as clients see them.
  virtual ovra::data_transfer::ServiceObject toServiceObject() const;
  /// The event's type on the wire.
  virtual std::wstring getTypeName() const = 0;
  /// What happened to the object.
  virtual std::wstring getDescription() const = 0;
  /// The event without its object; not yet stamped.
  virtual EventSummary summary() const = 0;

  /// Ticks since the Unix epoch; 0 until the journal stamps the event.
  std::int64_t creationTime() const { return m_creationTime; }
  EventSeverity severity() const { return m_severity; }
  /// A value of `DiskEventType` or `VolumeEventType`, as the class says.
  std::int32_t type() const { return m_type; }

 protected:
  base_event(EventSeverity severity, std::int32_t type) : m_severity(severity), m_type(type) {}

  /// All fields, of which these are not the same for all classes.
  ovra::data_transfer::ServiceObject formOf(std::wstring source, std::wstring sourceName,
                                            std::wstring description) const;

 private:
  friend class ::EventJournal;

  std::int64_t m_creationTime = 0;
  EventSeverity m_severity;
  std::int32_t m_type;
};

/// Keeps the device as it was, so that a removed one can still be named.
class disk_event : public base_event {
 public:
  disk_event(EventSeverity severity, DiskEventType type, EndDevice device);

  ovra::data_transfer::ServiceObject toServiceObject() const override;
  std::wstring getTypeName() const override;
  std::wstring getDescription() const override;
  EventSummary summary() const override;

  const EndDevice& device() const { return m_device; }

 private:
  DiskEventType diskType() const { return static_cast<DiskEventType>(type()); }

  EndDevice m_device;
};

/// Keeps the volume as it was, so that a deleted one can still be named.
class volume_event : public base_event {
 public:
  volume_event(EventSeverity severity, VolumeEventType type, Volume volume, const VolumeStates& states = {});

  ovra::data_transfer::ServiceObject toServiceObject() const override;
  std::wstring getTypeName() const override;
  std::wstring getDescription() const override;
  EventSummary summary() const override;

  const Volume& volume() const { return m_volume; }

 private:
  VolumeEventType volumeType() const { return static_cast<VolumeEventType>(type()); }

  Volume m_volume;
  VolumeStates m_states;
};

/// The schema of the events' forms, as `field::schemaOf` gives it.
ovra::data_transfer::ServiceObject eventSchema();

}  // namespace mirn_events

#endif
