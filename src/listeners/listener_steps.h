#ifndef MIRN_LISTENERS_LISTENER_STEPS_H
#define MIRN_LISTENERS_LISTENER_STEPS_H

#include <boost/optional.hpp>
#include <string>

#include "read_interface.h"
#include "service_exceptions.h"

/// The steps that handlers share. A handler reads as its list of steps: judge the body, judge the query,
/// parse identifiers, look objects up, check, act, answer. Each step here raises `ListenerException` on its
/// own, and none changes anything.

/// Raises `message` under `errorId`.
[[noreturn]] void refuse(const char* errorId, const std::wstring& message);
void requireThat(bool condition, const char* errorId, const std::wstring& message);

/// The text itself; "INVALID_PARAMETER" with `message` unless it matches `[[:alnum:]]+` in full.
std::wstring parseIdentifier(const std::wstring& text, const std::wstring& message);

/// What a look-up of the session has found; nothing is "OBJECT_NOT_FOUND" with `message`.
template <class Object>
Object foundOrRefused(const boost::optional<Object>& object, const std::wstring& message) {
  requireThat(object.has_value(), kErrorObjectNotFound, message);
  return *object;
}

/// The object with this id, or "OBJECT_NOT_FOUND".
Volume findVolume(IMirnSession& session, const std::wstring& id);
Volume findVolumeByName(IMirnSession& session, const std::wstring& name);
Array findArray(IMirnSession& session, const std::wstring& id);
Controller findController(IMirnSession& session, const std::wstring& id);
/// A device that is no disk is refused by the words of a missing one, under "INVALID_PARAMETER".
EndDevice findDisk(IMirnSession& session, const std::wstring& id);
/// Any type of device; "OBJECT_NOT_FOUND" with `message`.
EndDevice findEndDevice(IMirnSession& session, const std::wstring& id, const std::wstring& message);

/// A disk that takes part in a pair of x8 disks.
bool isX8Disk(const EndDevice& device);

#endif
