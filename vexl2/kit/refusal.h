#ifndef MIRN_VEXL2_KIT_REFUSAL_H
#define MIRN_VEXL2_KIT_REFUSAL_H

#include <stdexcept>

#include "VEXL2.h"

namespace vexl2 {

using Handle = VEX_HANDLE;
using Status = VEX_STATUS;

/// How an operation says no: the status that it answers. Raised before anything has changed.
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

}  // namespace vexl2

#endif
