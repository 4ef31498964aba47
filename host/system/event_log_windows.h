#ifndef MIRN_HOST_SYSTEM_EVENT_LOG_WINDOWS_H
#define MIRN_HOST_SYSTEM_EVENT_LOG_WINDOWS_H

#include <string>

namespace host {

/// The system's event log, in which a service has its say. The texts of its events are in the message table
/// of this executable.

/// What an event is in the viewer's eyes.
enum class EventKind { kInformation, kError };

/// Tells the system which executable has the texts. Both raise `std::runtime_error` with the system's reason.
void registerEventSource();
void unregisterEventSource();

/// `text` is UTF-8. Raises nothing: an event that is not taken is lost.
void writeEvent(EventKind kind, const std::string& text);

}  // namespace host

#endif
