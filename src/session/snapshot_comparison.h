#ifndef MIRN_SESSION_SNAPSHOT_COMPARISON_H
#define MIRN_SESSION_SNAPSHOT_COMPARISON_H

#include "mirn_snapshot.h"
#include "snapshot_difference.h"

/// How far two finished pictures differ in what clients can see of them, the order of lists included. An id
/// that an object refers to counts, whether it is published or not; a handle does not.
SnapshotDifference differenceBetween(const MirnSnapshot& before, const MirnSnapshot& after);

#endif
