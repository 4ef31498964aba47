#include "system/memory.h"

namespace host {

/// The system's heap is one for all threads, and gives back large blocks by itself.
void keepLittleMemory() {}
void giveMemoryBack() {}

}  // namespace host
