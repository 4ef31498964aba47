#ifndef MIRN_LIBRARY_STATUS_TEXT_H
#define MIRN_LIBRARY_STATUS_TEXT_H

#include <string>
#include <vector>

#include "refusal_kind.h"
#include "VEXL2.h"

/// What a status of the library says to people and to programs. Both know every status, 0 included, give the
/// unknown ones one common answer, never fail, and are safe from any thread.

/// A text in English. It lives as long as the program.
const char* statusToText(VEX_STATUS status);

/// One of the error ids of service_exceptions.h. Success has no id of its own: test the status first.
std::string statusToErrorId(VEX_STATUS status);

/// What kind of refusal a status is where it ends a request.
RefusalKind statusToKind(VEX_STATUS status);

/// All statuses that have a text of their own, ascending.
std::vector<VEX_STATUS> knownStatuses();

/// How the library says that an object is in no state for an action. `errorId` is what clients see then in
/// place of the status's own: one of the ids of a disk, volume or array in the wrong state.
VEX_STATUS statusOfInvalidState(const std::string& errorId);

#endif
