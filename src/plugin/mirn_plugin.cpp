#include "mirn_plugin.h"

#include "event_journal.h"
#include "framework_messages.h"
#include "guarded_session.h"
#include "listener_table.h"
#include "logger.h"
#include "lookup.h"
#include "mirn_exception.h"
#include "plugin_description.h"
#include "plugin_log_line.h"
#include "rehearsal.h"
#include "service_exceptions.h"
#include "text.h"
#include "VEXL2.h"
#include "whole_picture.h"

namespace {

const std::wstring kLibraryNotInitialized = L"Mirn VEX session could not be initialized";
const std::wstring kSessionNotStarted = L"Mirn VEX session could not be started";

constexpr std::int32_t kWorking = 0;
constexpr std::int32_t kNotWorking = 1;

constexpr std::int32_t kPreconditionFailed = 412;
constexpr char kMachineChanged[] = "The machine has changed meanwhile";

void logError(const std::wstring& text) {
  ovra::Logger::instance().log(LogLevel::kError, pluginLogLine(text));
}

}  // namespace

mirn_plugin::mirn_plugin() : m_initialized(0) { addListeners(); }

void mirn_plugin::addListeners() {
  for (const auto& [path, make] : listenerMakers()) m_listeners[path] = make(m_session, m_session);
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
  const bool wasInitialized = m_initialized.exchange(0) == 1;
  // Some may wait even after a second `initialize` that failed.
  m_session.changes().close();
  if (!wasInitialized) return;
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

void mirn_plugin::requireWorking() const {
  if (m_initialized == 0) throw ListenerException(kErrorOffline, wideToUtf8(kMsgPluginNotWorking));
}

ovra::data_transfer::ServiceObject mirn_plugin::handleRequest(std::wstring path, std::int32_t method,
                                                              std::vector<std::wstring> segments,
                                                              std::map<std::wstring, std::wstring> parameters,
                                                              ovra::data_transfer::ServiceObject body) {
  requireWorking();
  return lookUp(m_listeners, path)
      ->handleRequest(method, std::move(segments), std::move(parameters), std::move(body));
}

ovra::data_transfer::ServiceObject mirn_plugin::describe() {
  static const ovra::data_transfer::ServiceObject description = describePlugin();
  return description;
}

ovra::PluginPosition mirn_plugin::position() { return m_session.changes().position(); }

bool mirn_plugin::waitForChange(const ovra::PluginPosition& known, std::int64_t milliseconds) {
  return m_session.changes().waitForChange(known, milliseconds);
}

ovra::data_transfer::ServiceObject mirn_plugin::eventsAfter(std::uint64_t sequence, std::uint64_t limit) {
  return EventJournal::instance().getAfter(sequence, limit).toServiceObject();
}

ovra::data_transfer::ServiceObject mirn_plugin::picture() { return wholePicture(m_session.datedPicture()); }

ovra::data_transfer::ServiceObject mirn_plugin::rehearse(std::wstring path, std::int32_t method,
                                                         std::vector<std::wstring> segments,
                                                         std::map<std::wstring, std::wstring> parameters,
                                                         ovra::data_transfer::ServiceObject body) {
  requireWorking();
  return Rehearsal(m_session).plan(
      {std::move(path), method, std::move(segments), std::move(parameters), std::move(body)});
}

ovra::data_transfer::ServiceObject mirn_plugin::rehearseEach(
    std::wstring path, std::int32_t method, std::vector<std::wstring> segments,
    std::map<std::wstring, std::wstring> parameters, ovra::data_transfer::ServiceObject body,
    std::wstring argument, std::vector<ovra::data_transfer::ServiceObject> values) {
  requireWorking();
  return Rehearsal(m_session).planEach(
      {std::move(path), method, std::move(segments), std::move(parameters), std::move(body)}, argument,
      values);
}

ovra::data_transfer::ServiceObject mirn_plugin::handleRequestAt(
    const std::wstring& epoch, std::uint64_t structure, std::wstring path, std::int32_t method,
    std::vector<std::wstring> segments, std::map<std::wstring, std::wstring> parameters,
    ovra::data_transfer::ServiceObject body) {
  requireWorking();
  GuardedSession session(m_session, [&] {
    const ovra::PluginPosition now = m_session.changes().position();
    if (now.epoch != epoch || now.structure != structure) {
      throw ovra::common::HttpClientErrorException(kPreconditionFailed, kMachineChanged);
    }
  });
  return lookUp(listenerMakers(), path)(session, session)
      ->handleRequest(method, std::move(segments), std::move(parameters), std::move(body));
}
