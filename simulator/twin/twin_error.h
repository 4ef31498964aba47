#ifndef MIRN_SIMULATOR_TWIN_TWIN_ERROR_H
#define MIRN_SIMULATOR_TWIN_TWIN_ERROR_H

#include <stdexcept>

namespace simulator {

/// Answers that no machine of the simulator can give. `what()` is one line: the place in the answers, as in
/// "volumes[2].totalSize", and what is wrong there.
class TwinError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace simulator

#endif
