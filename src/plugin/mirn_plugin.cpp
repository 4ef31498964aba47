#include "mirn_plugin.h"

#include "arrays_listener.h"
#include "basic_listener.h"
#include "controllers_listener.h"
#include "disks_listener.h"
#include "enddevices_listener.h"
#include "events_listener.h"
#include "framework_messages.h"
#include "logger.h"
#include "lookup.h"
#include "mirn_exception.h"
#include "plugin_description.h"
#include "plugin_identity.h"
#include "plugin_log_line.h"
#include "ports_listener.h"
#include "raids_listener.h"
#include "service_exceptions.h"
#include "text.h"
#include "VEXL2.h"
#include "volumes_listener.h"

namespace {

const std::wstring kLibraryNotInitialized = L"Mirn VEX session could not be initialized";
const std::wstring kSessionNotStarted = L"Mirn VEX session could not be started";

constexpr std::int32_t kWorking = 0;
constexpr std::int32_t kNotWorking = 1;

void logError(const std::wstring& text) {
  ovra::Logger::instance().log(LogLevel::kError, pluginLogLine(text));
}

}  // namespace

mirn_plugin::mirn_plugin() : m_initialized(0) { addListeners(); }

void mirn_plugin::addListeners() {
  MirnSession* const s = &m_session;
  const auto add = [this](const wchar_t* suffix, std::unique_ptr<IListener> listener) {
    m_listeners[getCode() + suffix] = std::move(listener);
  };
  add(L"", std::make_unique<BasicListener>(s, s));
  add(L"/raids", std::make_unique<RaidsListener>(s));
  add(L"/arrays", std::make_unique<ArraysListener>(s, s));
  add(L"/enddevices", std::make_unique<EndDevicesListener>(s));
  add(L"/controllers", std::make_unique<ControllersListener>(s, s));
  add(L"/ports", std::make_unique<PortsListener>(s, s));
  add(L"/volumes", std::make_unique<VolumesListener>(s, s));
  add(L"/disks", std::make_unique<DisksListener>(s, s));
  add(L"/events", std::make_unique<EventsListener>());
}

bool mirn_plugin::initialize() {
  static_cast<void>(std::wstring(L"dump.xml"));  // marks the place; nothing reads it
  m_initialized = 0;
  if (VexInitialize() != VEX_STATUS_SUCCESS) {
    logError(kLibraryNotInitialized);
    return false;
  }
  try {
    m_session.start();
  } catch (const MirnException&) {
    logError(kSessionNotStarted);
    VexFinalize();
    return false;
  }
  m_initialized = 1;
  return true;
}

void mirn_plugin::finish() {
  if (m_initialized != 1) return;
  m_initialized = 0;
  m_session.stop();
  VexFinalize();
}

std::int32_t mirn_plugin::getStatus() {
  if (m_initialized == 0) return kNotWorking;
  VEX_SYSTEM_INFO info{};
  return VexGetSystemInfo(&info) == VEX_STATUS_SUCCESS ? kWorking : kNotWorking;
}

std::vector<std::wstring> mirn_plugin::getHandledPaths() {
  std::vector<std::wstring> paths;
  for (const auto& entry : m_listeners) paths.push_back(entry.first);
  return paths;
}

ovra::data_transfer::ServiceObject mirn_plugin::handleRequest(std::wstring path, std::int32_t method,
                                                              std::vector<std::wstring> segments,
                                                              std::map<std::wstring, std::wstring> parameters,
                                                              ovra::data_transfer::ServiceObject body) {
  if (m_initialized == 0) throw ListenerException(kErrorOffline, wideToUtf8(kMsgPluginNotWorking));
  return lookUp(m_listeners, path)
      ->handleRequest(method, std::move(segments), std::move(parameters), std::move(body));
}

ovra::data_transfer::ServiceObject mirn_plugin::describe() {
  static const ovra::data_transfer::ServiceObject description = describePlugin();
  return description;
}
