#include "rules/apply.h"

#include "engine/settle.h"

namespace simulator {

Status apply(Machine& machine, const std::function<void(Machine&)>& change) {
  try {
    change(machine);
  } catch (const Refusal& refusal) {
    return refusal.status();
  }
  settle(machine);
  ++machine.changes;
  return VEX_STATUS_SUCCESS;
}

}  // namespace simulator
