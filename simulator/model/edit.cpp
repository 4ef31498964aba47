#include "model/edit.h"

namespace simulator {
namespace {

template <class Act>
void forEachTable(Machine& machine, Act act) {
  act(machine.engines);
  act(machine.controllers);
  act(machine.devices);
  act(machine.ports);
  act(machine.arrays);
  act(machine.volumes);
  act(machine.phyOwner);
}

}  // namespace

Edit::Edit(Machine& machine)
    : m_machine(machine),
      m_nextHandle(machine.nextHandle),
      m_changes(machine.changes),
      m_pendingMs(machine.pendingMs) {
  forEachTable(m_machine, [](auto& table) { table.watch(); });
}

Edit::~Edit() {
  if (!m_isOpen) return;
  forEachTable(m_machine, [](auto& table) { table.undo(); });
  m_machine.nextHandle = m_nextHandle;
  m_machine.changes = m_changes;
  m_machine.pendingMs = m_pendingMs;
}

void Edit::keep() {
  forEachTable(m_machine, [](auto& table) { table.unwatch(); });
  m_isOpen = false;
}

}  // namespace simulator
