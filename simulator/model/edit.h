#ifndef MIRN_SIMULATOR_MODEL_EDIT_H
#define MIRN_SIMULATOR_MODEL_EDIT_H

#include "model/machine.h"

namespace simulator {

/// A change of the machine that can be taken back until it is kept: while it lives, the machine remembers
/// what its objects were. One at a time.
class Edit {
 public:
  explicit Edit(Machine& machine);
  Edit(const Edit&) = delete;
  Edit& operator=(const Edit&) = delete;

  /// Takes the change back unless it was kept.
  ~Edit();

  void keep();

  const Machine& machine() const { return m_machine; }

  /// The handle that was next when the edit began.
  Handle nextHandleBefore() const { return m_nextHandle; }

 private:
  Machine& m_machine;
  Handle m_nextHandle;
  std::uint64_t m_changes;
  std::uint64_t m_pendingMs;
  bool m_isOpen = true;
};

}  // namespace simulator

#endif
