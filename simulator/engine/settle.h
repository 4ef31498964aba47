#ifndef MIRN_SIMULATOR_ENGINE_SETTLE_H
#define MIRN_SIMULATOR_ENGINE_SETTLE_H

#include "model/machine.h"

/// What the machine does by itself after something has changed.
namespace simulator {

/// Draws the consequences of one change; running it again changes nothing.
///
/// - A volume that serves without one of its disks goes on being written, so that disk's content becomes
///   stale. A volume that is lost is not written, so its disks stay as they are and bring it back when
///   they return.
/// - Work ends when the loss of a disk has taken its ground away; a migration waits, or begins anew.
/// - Degraded volumes are rebuilt onto a member that has come back, else onto a spare, else onto a disk put
///   in since, where the controller rebuilds on hot insert. A migration that waits for a member gets one
///   likewise, and so does an array without volumes.
void settle(Machine& machine);

}  // namespace simulator

#endif
