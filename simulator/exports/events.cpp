#include "core/library.h"
#include "VEXL2.h"

using simulator::Library;

VEX_STATUS VexGetEventHandle(VEX_HANDLE* event) { return Library::instance().subscribe(__func__, event); }

VEX_STATUS VexEventWait(uint32_t timeoutMs, VEX_HANDLE event) {
  return Library::instance().wait(__func__, timeoutMs, event);
}

VEX_STATUS VexFreeEventHandle(VEX_HANDLE event) { return Library::instance().unsubscribe(__func__, event); }
