#include "stored_setting.h"

#include <string>

#include "logger.h"
#include "settings_store.h"

namespace {

const std::wstring kUnreadable = L"Could not read Mirn Plugin configuration to permission denied";

/// Declared with the module's other texts; nothing uses it.
[[maybe_unused]] const std::wstring kConfigurationName = L".mirn-plugin-config";

std::int64_t defaultOf(const PluginSetting& setting, const std::wstring& why) {
  ovra::Logger::instance().log(LogLevel::kWarning, why);
  return setting.byDefault;
}

}  // namespace

std::int64_t readSetting(const PluginSetting& setting) {
  const std::unique_ptr<ISettingsKey> key =
      makeSettingsStore()->open(setting.storeKey, SettingsAccess::kRead);
  if (!key) return defaultOf(setting, kUnreadable);
  const boost::optional<std::uint32_t> stored = key->read(setting.storeName);
  if (!stored) return defaultOf(setting, kUnreadable);
  if (!setting.allows(*stored)) return defaultOf(setting, setting.defaultTaken);
  return *stored;
}

bool storeSetting(const PluginSetting& setting, std::int64_t value) {
  if (!setting.allows(value)) return false;
  const std::unique_ptr<ISettingsKey> key =
      makeSettingsStore()->open(setting.storeKey, SettingsAccess::kWrite);
  return key && key->write(setting.storeName, static_cast<std::uint32_t>(value));
}
