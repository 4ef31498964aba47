#ifndef MIRN_BENCH_SNAPSHOT_OF_H
#define MIRN_BENCH_SNAPSHOT_OF_H

#include <utility>

#include "mirn_session.h"
#include "scripted_library/scripted_library.h"

/// What a session sees of a machine.
inline MirnSnapshot snapshotOf(ScriptedMachine machine) {
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  library.setMachine(std::move(machine));
  return MirnSession().takeSnapshot();
}

#endif
