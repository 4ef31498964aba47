#ifndef MIRN_FRAMEWORK_PLUGIN_IDENTITY_H
#define MIRN_FRAMEWORK_PLUGIN_IDENTITY_H

#include <string>

#include "plugin_interface.h"

/// Who this plug-in is. Set by static initialisation, before any export of the module can run.
extern const std::wstring kPluginName;
extern const std::wstring kPluginShortName;
extern const std::wstring kPluginCode;
extern const std::wstring kPluginApiVersion;
extern const PluginVersion kPluginVersion;

#endif
