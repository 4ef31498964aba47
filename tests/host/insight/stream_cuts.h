#ifndef MIRN_TESTS_HOST_INSIGHT_STREAM_CUTS_H
#define MIRN_TESTS_HOST_INSIGHT_STREAM_CUTS_H

#include <cstdint>
#include <string>

namespace host {

struct StreamCuts {
  int cuts = 0;
  int restarts = 0;
  std::uint64_t told = 0;
  std::uint64_t heard = 0;
  std::uint64_t gaps = 0;
  std::uint64_t missing = 0;    ///< In those.
  std::uint64_t farewells = 0;  ///< Of hosts that stopped.
};

/// A client that listens while much happens and little of it is kept, is cut off at random bytes so many
/// times, and comes back each time, in between to a host that was stopped and started anew. `folder` is for
/// the history. Raises `std::runtime_error` when something is missing, comes twice or out of order.
StreamCuts cutStreams(const std::string& folder, int cuts, unsigned seed);

}  // namespace host

#endif
