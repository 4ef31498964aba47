#ifndef MIRN_LIBRARY_STATUS_TEXT_H
#define MIRN_LIBRARY_STATUS_TEXT_H

#include <string>

#include "VEXL2.h"

/// What a status of the library says to people and to programs. Both know every status, 0 included, give the
/// unknown ones one common answer, never fail, and are safe from any thread.

/// A text in English. It lives as long as the program.
const char* statusToText(VEX_STATUS status);

/// One of the error ids of service_exceptions.h. Success has no id of its own: test the status first.
std::string statusToErrorId(VEX_STATUS status);

#endif
