#include "plugin_identity.h"

#include "plugin_version.h"

const std::wstring kPluginName = L"" MIRN_NAME;
const std::wstring kPluginShortName = L"" MIRN_SHORT_NAME;
const std::wstring kPluginCode = L"mirn";
const std::wstring kPluginApiVersion = L"v1";
const PluginVersion kPluginVersion = {MIRN_VERSION_MAJOR, MIRN_VERSION_MINOR, MIRN_VERSION_PATCH,
                                      MIRN_VERSION_BUILD};
