#ifndef MIRN_HOST_SYSTEM_MEMORY_H
#define MIRN_HOST_SYSTEM_MEMORY_H

#include <cstddef>

namespace host {

/// What the allocator keeps of memory that is free; one source a system.

/// Keeps it from holding a store for each thread. Before the threads start.
void keepLittleMemory();

/// Gives back to the system what is free. Takes milliseconds: after something large only.
void giveMemoryBack();

/// From so many bytes of text on it pays: their values took several times as much.
constexpr std::size_t kLargeBytes = 262144;

}  // namespace host

#endif
