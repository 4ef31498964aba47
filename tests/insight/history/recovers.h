#ifndef MIRN_TESTS_INSIGHT_HISTORY_RECOVERS_H
#define MIRN_TESTS_INSIGHT_HISTORY_RECOVERS_H

#include <chrono>
#include <thread>

#include "history/history.h"
#include "insight/history/sample_entries.h"

namespace insight {

/// Adds events from `sequence` on until one gets through, which a file that could not be written takes at the
/// history's next try; false when that takes too long.
inline bool recovers(History& history, std::uint64_t sequence) {
  using namespace std::chrono_literals;
  for (int tries = 0; tries < 500; ++tries, ++sequence) {
    if (history.addAndWait(sampleEvents(sequence, sequence), 10s)) return true;
    std::this_thread::sleep_for(10ms);
  }
  return false;
}

}  // namespace insight

#endif
