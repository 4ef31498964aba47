#ifndef MIRN_TESTS_SUPPORT_DEFAULT_SETTINGS_H
#define MIRN_TESTS_SUPPORT_DEFAULT_SETTINGS_H

#include "plugin_setting.h"
#include "support/machine_settings.h"

/// Machine settings that hold the default of every setting of the plug-in, so that a session has nothing to
/// log when it is made.
class DefaultSettings : public MachineSettings {
 public:
  DefaultSettings() {
    for (const PluginSetting& setting : pluginSettings()) storeDefault(setting);
  }

  /// Leaves one out, for a test to store it or not.
  explicit DefaultSettings(const PluginSetting& left) {
    for (const PluginSetting& setting : pluginSettings()) {
      if (setting.get != left.get) storeDefault(setting);
    }
  }

 private:
  void storeDefault(const PluginSetting& setting) {
    store(setting.storeName, static_cast<std::uint32_t>(setting.byDefault));
  }
};

#endif
