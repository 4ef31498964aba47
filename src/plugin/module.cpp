#include <memory>

#include "mirn_plugin.h"
#include "plugin_identity.h"
#include "plugin_interface.h"

#ifdef _WIN32
#define MIRN_EXPORT extern "C" __declspec(dllexport)
#else
#define MIRN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

/// Says who the module is; makes no plug-in and touches nothing else.
MIRN_EXPORT void discover_plugin(PluginDescription& out) {
  out.name = kPluginName;
  out.code = kPluginCode;
  out.apiVersion = kPluginApiVersion;
  out.version = kPluginVersion;
}

/// Makes a new plug-in at each call and hands it over. Lets a failure of its construction pass.
MIRN_EXPORT bool register_plugin(PluginRegistrar& registrar) {
  return registrar.addPlugin(std::make_shared<mirn_plugin>());
}
