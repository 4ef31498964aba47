#include <sys/resource.h>

#include <algorithm>

#include "net/descriptors.h"

namespace host {

/// What a process may open is often kept low at first, for the sake of old programs.
void allowDescriptors(std::size_t connections) {
  constexpr rlim_t kOthers = 256;
  rlimit limit{};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  const rlim_t wanted = std::min<rlim_t>(connections + kOthers, limit.rlim_max);
  if (limit.rlim_cur >= wanted) return;
  limit.rlim_cur = wanted;
  setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace host
