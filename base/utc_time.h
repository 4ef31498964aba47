#ifndef MIRN_BASE_UTC_TIME_H
#define MIRN_BASE_UTC_TIME_H

#include <cstdint>
#include <optional>
#include <string>

/// A moment, in ticks since the Unix epoch (tick_clock.h), as RFC 3339 writes it: in UTC, to the millisecond,
/// such as "2026-11-22T01:05:00.250Z". For the years 1970 to 9999.
std::string utcText(std::int64_t ticks);

/// The moment of such a text, which may tell another offset than UTC's and a finer or coarser time: cut to
/// the millisecond. Nothing for any other text, and for a moment before 1970.
std::optional<std::int64_t> utcTicks(const std::string& text);

#endif
