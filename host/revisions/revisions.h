#ifndef MIRN_HOST_REVISIONS_REVISIONS_H
#define MIRN_HOST_REVISIONS_REVISIONS_H

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "revisions/kept_answers.h"
#include "revisions/revision_watch.h"

namespace host {

/// What a plug-in that tells its revision lets a host do.
struct Revisions {
  /// `watched` is initialised and outlives this.
  Revisions(ovra::watched_plugin_1& watched, std::size_t keptBytes, std::size_t mostWaiting)
      : plugin(watched), kept(keptBytes), watch(watched, mostWaiting) {}

  ovra::watched_plugin_1& plugin;
  KeptAnswers kept;
  RevisionWatch watch;

  // Of reads that may be kept, how many were answered without a call of the plug-in, and with one.
  std::atomic<std::uint64_t> hits{0};
  std::atomic<std::uint64_t> misses{0};
};

}  // namespace host

#endif
