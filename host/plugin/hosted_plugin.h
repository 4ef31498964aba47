#ifndef MIRN_HOST_PLUGIN_HOSTED_PLUGIN_H
#define MIRN_HOST_PLUGIN_HOSTED_PLUGIN_H

#include <memory>
#include <string>

#include "plugin/module_loader.h"
#include "plugin_interface.h"

namespace host {

/// A plug-in on its way through the calling order: the constructor discovers and registers; `initialize`; any
/// number of requests; `finish`; the destructor releases the plug-in. An initialised plug-in is never
/// released unfinished.
///
/// Failures of the plug-in pass as they are, and their code is the module's.
class HostedPlugin : private PluginRegistrar {
 public:
  /// `module` outlives the plug-in and whatever it raises. Raises `std::runtime_error` when the module gives
  /// no plug-in.
  explicit HostedPlugin(const LoadedModule& module);
  HostedPlugin(const HostedPlugin&) = delete;
  HostedPlugin& operator=(const HostedPlugin&) = delete;
  virtual ~HostedPlugin();

  const PluginDescription& description() const { return m_description; }
  ovra::service_plugin_interface& plugin() { return *m_plugin; }
  const LoadedModule& module() const { return m_module; }

  /// Raises `std::runtime_error` when the plug-in says that it is not ready, or raises itself.
  void initialize();

  /// With no request under way. Does something after a successful `initialize` only, and once; a failure of
  /// the plug-in passes. The destructor does it too, and keeps such a failure to itself.
  void finish();

 private:
  bool addPlugin(std::shared_ptr<ovra::plugin_interface> plugin) override;

  const LoadedModule& m_module;
  PluginDescription m_description{};
  std::shared_ptr<ovra::service_plugin_interface> m_plugin;
  bool m_initialized = false;
};

}  // namespace host

#endif
