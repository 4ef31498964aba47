#include "plugin/hosted_plugin.h"

#include <stdexcept>
#include <utility>

#include "system/report.h"
#include "text.h"

namespace host {

namespace {

std::string quotedName(const PluginDescription& description) {
  return "\"" + wideToUtf8(description.name) + "\"";
}

}  // namespace

HostedPlugin::HostedPlugin(const LoadedModule& module) : m_module(module) {
  const auto discover = m_module.find<DiscoverPluginFunction>(kDiscoverPluginName);
  const auto registerPlugin = m_module.find<RegisterPluginFunction>(kRegisterPluginName);
  discover(m_description);
  if (!registerPlugin(*this) || !m_plugin) {
    throw std::runtime_error("the module registers no service plug-in under the name " +
                             quotedName(m_description));
  }
}

bool HostedPlugin::addPlugin(std::shared_ptr<ovra::plugin_interface> plugin) {
  if (m_plugin) return false;
  m_plugin = std::dynamic_pointer_cast<ovra::service_plugin_interface>(plugin);
  return m_plugin != nullptr;
}

void HostedPlugin::initialize() {
  std::string reason;
  try {
    m_initialized = m_plugin->initialize();
    if (m_initialized) return;
  } catch (const std::exception& failure) {
    reason = std::string(": ") + failure.what();
  }
  throw std::runtime_error("the plug-in " + quotedName(m_description) + " could not be initialised" + reason);
}

void HostedPlugin::finish() {
  if (std::exchange(m_initialized, false)) m_plugin->finish();
}

HostedPlugin::~HostedPlugin() {
  try {
    finish();
  } catch (const std::exception& failure) {
    report(std::string("the plug-in failed to finish: ") + failure.what());
  }
}

}  // namespace host
