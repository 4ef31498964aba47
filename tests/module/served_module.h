#ifndef MIRN_TESTS_MODULE_SERVED_MODULE_H
#define MIRN_TESTS_MODULE_SERVED_MODULE_H

#include <memory>
#include <string>

#include "module/request.h"
#include "plugin_interface.h"
#include "support/loaded_module.h"

/// A plug-in of a loaded module, over the scripted library. Ends as a host ends it.
class ServedModule {
 public:
  explicit ServedModule(const LoadedModule& module) : m_plugin(module.registerPlugin()) {}
  ~ServedModule();
  ServedModule(const ServedModule&) = delete;
  ServedModule& operator=(const ServedModule&) = delete;

  /// Initialises, and returns when nothing but requests calls the library any more.
  void start();

  std::string outcomeOf(const Request& request) const;

  /// What the module makes of the machine: the lists of arrays and volumes, and of all other
  /// objects if `whole`.
  std::string picture(bool whole) const;

  /// The plug-in by another of its interfaces; null where it has no such.
  template <class Interface>
  std::shared_ptr<Interface> as() const {
    return std::dynamic_pointer_cast<Interface>(m_plugin);
  }

  ovra::service_plugin_interface* operator->() const { return m_plugin.get(); }

 private:
  std::shared_ptr<ovra::service_plugin_interface> m_plugin;
};

#endif
