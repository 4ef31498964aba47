// A client of the event stream that is cut off at random bytes again and again, over restarts of the host and
// while the history is pruned. Prints what it heard, and fails when something was missing without a word.
// Takes the folder of the history, how many cuts, and a seed.
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "host/insight/stream_cuts.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: mirn_stream_cuts FOLDER CUTS SEED\n", stderr);
    return 2;
  }
  try {
    const auto seed = static_cast<unsigned>(std::strtoul(argv[3], nullptr, 10));
    const host::StreamCuts cuts = host::cutStreams(argv[1], std::atoi(argv[2]), seed);
    std::printf(
        "%d cuts, %d restarts, %llu farewells: %llu entries told, %llu heard, %llu missing in %llu gaps\n",
        cuts.cuts, cuts.restarts, static_cast<unsigned long long>(cuts.farewells),
        static_cast<unsigned long long>(cuts.told), static_cast<unsigned long long>(cuts.heard),
        static_cast<unsigned long long>(cuts.missing), static_cast<unsigned long long>(cuts.gaps));
    return cuts.heard + cuts.missing == cuts.told ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
