#ifndef MIRN_SESSION_SNAPSHOT_DIFFERENCE_H
#define MIRN_SESSION_SNAPSHOT_DIFFERENCE_H

/// How far two pictures differ in what they publish.
enum class SnapshotDifference {
  kNone,
  kProgress,   ///< In nothing but progress and the counters of verification.
  kStructure,  ///< In anything else.
};

#endif
