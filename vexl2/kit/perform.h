#ifndef MIRN_VEXL2_KIT_PERFORM_H
#define MIRN_VEXL2_KIT_PERFORM_H

#include "fault_points.h"
#include "refusal.h"
#include "say.h"

/// How an operation is carried out, whatever it does: the body raises a `Refusal`, or does its work and
/// returns a status. No exception leaves a library.
namespace vexl2 {

/// The body's status, or that of its refusal. Any other exception is said and answered with 16.
template <class Body>
Status guarded(const Body& body) {
  try {
    return body();
  } catch (const Refusal& refusal) {
    return refusal.status();
  } catch (const std::exception& error) {
    say(error.what());
    return VEX_STATUS_INTERNAL_ERROR;
  }
}

/// Like `guarded`, for an operation by its name: the call is counted, and what was ordered for it
/// comes first.
template <class Body>
Status perform(FaultPoints& faults, const char* operation, const Body& body) {
  return guarded([&]() -> Status {
    const auto ordered = faults.pass(operation);
    return ordered ? *ordered : body();
  });
}

}  // namespace vexl2

#endif
