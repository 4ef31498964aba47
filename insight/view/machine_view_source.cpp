#include "view/machine_view_source.h"

#include <algorithm>
#include <utility>

namespace insight {

MachineViewSource::MachineViewSource(ovra::watched_plugin_1& plugin, Clock clock)
    : m_plugin(plugin), m_clock(std::move(clock)) {}

std::shared_ptr<const MachineView> MachineViewSource::view() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (!isCurrent()) make();
  return m_view;
}

std::shared_ptr<const MachineView> MachineViewSource::viewOfStructure() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (!isOfStructure()) make();
  return m_view;
}

void MachineViewSource::make() {
  const Moment begin = m_clock();
  m_view = std::make_shared<const MachineView>(machineViewOf(m_plugin.picture()));
  const Moment made = m_clock();
  m_end = made + std::min<Moment::duration>(kUseToMaking * (made - begin), kLongestUse);
}

bool MachineViewSource::isCurrent() const {
  if (!m_view || m_clock() >= m_end) return false;
  const ovra::PluginPosition now = m_plugin.position();
  const ovra::PluginPosition& known = m_view->position;
  return now.epoch == known.epoch && now.revision == known.revision && now.sequence == known.sequence;
}

bool MachineViewSource::isOfStructure() const {
  if (!m_view) return false;
  const ovra::PluginPosition now = m_plugin.position();
  return now.epoch == m_view->position.epoch && now.structure == m_view->position.structure;
}

}  // namespace insight
