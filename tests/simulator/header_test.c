/* The controls are C: this only has to compile and link. */
#include "vexl2_simulator.h"

VEX_STATUS controlsAreC(void);

VEX_STATUS controlsAreC(void) {
  uint64_t calls = 0;
  const VEX_STATUS status = VexSimCountCalls("VexRescan", &calls);
  return status == VEX_STATUS_SUCCESS ? VexSimClearFaults() : status;
}
