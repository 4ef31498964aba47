#ifndef MIRN_SESSION_STORED_SETTING_H
#define MIRN_SESSION_STORED_SETTING_H

#include <cstdint>

#include "plugin_setting.h"

/// A setting and the store that it lives in. No operation raises on a failure of the store.

/// The stored value; the default when there is none, when it cannot be read, or when it is out of bounds.
/// Each of these is logged as a warning, and nothing is written back.
std::int64_t readSetting(const PluginSetting& setting);

/// True when the store took the value. A value out of bounds is refused without a look at the store.
bool storeSetting(const PluginSetting& setting, std::int64_t value);

#endif
