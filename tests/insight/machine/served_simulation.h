#ifndef MIRN_TESTS_INSIGHT_MACHINE_SERVED_SIMULATION_H
#define MIRN_TESTS_INSIGHT_MACHINE_SERVED_SIMULATION_H

#include <memory>
#include <string>

#include "plugin_extensions.h"
#include "plugin_interface.h"
#include "support/default_settings.h"
#include "support/loaded_module.h"
#include "view/machine_view.h"

/// The module over the simulated library, whose time stands still. Ends as a host ends it.
class ServedSimulation {
 public:
  explicit ServedSimulation(const LoadedModule& module);
  ~ServedSimulation();
  ServedSimulation(const ServedSimulation&) = delete;
  ServedSimulation& operator=(const ServedSimulation&) = delete;

  /// Puts the machine of a scenario's text in place of the present one, and looks at it.
  void load(const std::string& scenario);
  /// The machine as the text of a scenario.
  static std::string save();

  void rescan();
  insight::MachineView view();

  ovra::service_plugin_interface& plugin() { return *m_plugin; }

  template <class Interface>
  Interface& as() {
    return dynamic_cast<Interface&>(*m_plugin);
  }

 private:
  const DefaultSettings m_settings;
  std::shared_ptr<ovra::service_plugin_interface> m_plugin;
};

#endif
