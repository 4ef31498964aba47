#ifndef MIRN_EVENTS_EVENT_TIME_H
#define MIRN_EVENTS_EVENT_TIME_H

#include <cstdint>
#include <string>

/// A time in ticks since the Unix epoch, as the machine's local time in the process's locale, such as
/// "03/02/24 11:04:05 PM". Empty when it cannot be expressed.
std::wstring eventTimeText(std::int64_t ticks);

#endif
