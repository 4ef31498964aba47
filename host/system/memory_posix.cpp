#include <malloc.h>

#include "system/memory.h"

namespace host {

/// By itself the allocator has up to eight stores a core, and each keeps what its largest request took. With
/// a fixed threshold large texts are the system's own from the first, and go back to it at once.
void keepLittleMemory() {
  constexpr int kArenas = 2;
  constexpr int kLargeText = 128 * 1024;
  mallopt(M_ARENA_MAX, kArenas);
  mallopt(M_MMAP_THRESHOLD, kLargeText);
}

void giveMemoryBack() { malloc_trim(0); }

}  // namespace host
