#ifndef MIRN_BASE_SYSTEM_REASON_H
#define MIRN_BASE_SYSTEM_REASON_H

#include <stdexcept>

/// Why the last call of the system on this thread failed: its own words, as UTF-8. One source a system.
std::runtime_error lastSystemFailure();

#endif
