#ifndef MIRN_SIMULATOR_MODEL_REFUSAL_H
#define MIRN_SIMULATOR_MODEL_REFUSAL_H

#include <stdexcept>

#include "model/codes.h"

namespace simulator {

/// How a rule says no: the status that the operation answers. Raised before anything has changed.
class Refusal : public std::runtime_error {
 public:
  explicit Refusal(Status status) : std::runtime_error("refused"), m_status(status) {}
  Status status() const { return m_status; }

 private:
  Status m_status;
};

inline void require(bool condition, Status status) {
  if (!condition) throw Refusal(status);
}

}  // namespace simulator

#endif
