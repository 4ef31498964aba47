#ifndef MIRN_FUZZ_PROPERTY_H
#define MIRN_FUZZ_PROPERTY_H

#include <cstdio>
#include <cstdlib>

namespace fuzz {

/// Ends the process as a finding, saying what should have held, unless `holds`.
inline void require(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", property);
  std::abort();
}

}  // namespace fuzz

#endif
