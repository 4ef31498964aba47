#ifndef MIRN_SIMULATOR_ENGINE_MIGRATION_H
#define MIRN_SIMULATOR_ENGINE_MIGRATION_H

#include "model/machine.h"

namespace simulator {

/// Draws the consequences of a change for a volume that migrates.
///
/// - A migration ends only when the volume would serve from where it comes to, and waits otherwise.
/// - When it would serve but for members that are stale and have come back, the migration begins anew and
///   writes them too: then they are caught up when it ends.
void settleMigration(Machine& machine, Volume& volume);

}  // namespace simulator

#endif
