#ifndef MIRN_BASE_UTC_TIME_H
#define MIRN_BASE_UTC_TIME_H

#include <cstdint>
#include <string>

/// A moment, in ticks since the Unix epoch (tick_clock.h), as RFC 3339 writes it: in UTC, to the millisecond,
/// such as "2026-11-22T01:05:00.250Z". For the years 1970 to 9999.
std::string utcText(std::int64_t ticks);

#endif
