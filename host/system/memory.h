#ifndef MIRN_HOST_SYSTEM_MEMORY_H
#define MIRN_HOST_SYSTEM_MEMORY_H

namespace host {

/// What the allocator keeps of memory that is free; one source a system.

/// Keeps it from holding a store for each thread. Before the threads start.
void keepLittleMemory();

/// Gives back to the system what is free. Takes milliseconds: after something large only.
void giveMemoryBack();

}  // namespace host

#endif
