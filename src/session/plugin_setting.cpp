#include "plugin_setting.h"

namespace {

/// The parameters of the storage driver's service, which acts on the values.
constexpr wchar_t kDriverKey[] = L"SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device";

}  // namespace

constexpr PluginSetting kLocateTimeoutSetting = {
    kDriverKey,
    L"LedLocateTimeout",
    kLocateTimeoutDefault,
    kLocateTimeoutMin,
    kLocateTimeoutMax,
    L"locate_timeout",
    L"Defines timeout for LED Locate in seconds. When LED for port is on, it will flash for this amount of "
    L"time and then turns off.",
    L"integer",
    L"s",
    L"Timeout value is too low or negative",
    L"Timeout value is too high",
    L"Could not change LED Locate timeout due to permission denied",
    L"Timeout value exceeds legal values in the configuration and will be set to default",
    &IMirnSession::getLocateTimeout,
    &IMirnSession::setLocateTimeout,
};

const PluginSettings& pluginSettings() {
  static const PluginSettings settings = {kLocateTimeoutSetting};
  return settings;
}
