#ifndef MIRN_TESTS_SUPPORT_LOADED_MODULE_H
#define MIRN_TESTS_SUPPORT_LOADED_MODULE_H

#include <memory>
#include <string>

#include "plugin_interface.h"

/// A module as a host sees it: loaded by path, reached through its two exports alone, and unloaded at the
/// end. What it handed over must be gone by then. Paths are UTF-8.
class LoadedModule {
 public:
  /// Raises `std::runtime_error` when there is no such module or it lacks an export.
  explicit LoadedModule(const std::string& path);
  ~LoadedModule();
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;

  PluginDescription discover() const;
  /// The plug-in that `register_plugin` hands over; null when it hands none.
  std::shared_ptr<ovra::service_plugin_interface> registerPlugin() const;
  /// What `register_plugin` returns when the registrar answers `accepted`.
  bool registerWith(bool accepted) const;

  /// The module at `path` is in the process.
  static bool isLoaded(const std::string& path);

 private:
  // The system's part.
  static void* load(const std::string& path);
  static void* exportOf(void* handle, const char* name);
  static void unload(void* handle);

  void* m_handle;
  DiscoverPluginFunction m_discover;
  RegisterPluginFunction m_register;
};

#endif
