#ifndef MIRN_BENCH_LIBRARY_CALLS_H
#define MIRN_BENCH_LIBRARY_CALLS_H

/// Makes the library calls of one snapshot, in their order, and drops what they give: the library's share of
/// the time, which no plug-in can save.
void callLibraryAsASnapshotDoes();

/// Ends the program when a snapshot of the small machine makes other calls than `callLibraryAsASnapshotDoes`:
/// the floor would be none.
void checkLibraryCalls();

#endif
