#include "basic_listener.h"

#include "answers.h"
#include "configuration.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

constexpr wchar_t kVolumeObjectType[] = L"VOLUME";

WorkUnderWay workOn(const Volume& volume) {
  return {volume.id(), volume.state(), volume.name(), kVolumeObjectType};
}

ServiceObject getState(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                       const ServiceObject&) {
  // Two reads, so the two members need not come from one snapshot.
  StateAnswer answer{session->getServiceState(), {}};
  for (const Volume& volume : session->getVolumesInProgress()) answer.inProgress.push_back(workOn(volume));
  return formOf(answer);
}

ServiceObject getVersion(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                         const ServiceObject&) {
  return session->getVersion().toServiceObject();
}

ServiceObject rescan(IMirnBasicActions* actions, const RouteMatch&, const RequestParameters&,
                     const ServiceObject&) {
  actions->rescan();
  return ServiceObject::null();
}

ServiceObject getConfiguration(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                               const ServiceObject&) {
  return configurationOf(pluginSettings(), *session);
}

/// Takes any query parameter.
ServiceObject putConfiguration(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                               const ServiceObject& body) {
  changeConfiguration(pluginSettings(), *session, body);
  return ServiceObject::null();
}

}  // namespace

BasicListener::BasicListener(IMirnSession* session, IMirnBasicActions* actions)
    : m_session(session), m_actions(actions) {
  addRoute(RouteId::kGetState, std::bind(getState, m_session, _1, _2, _3));
  addRoute(RouteId::kGetVersion, std::bind(getVersion, m_session, _1, _2, _3));
  addRoute(RouteId::kRescan, std::bind(rescan, m_actions, _1, _2, _3));
  addRoute(RouteId::kGetConfig, std::bind(getConfiguration, m_session, _1, _2, _3));
  addRoute(RouteId::kSetConfig, std::bind(putConfiguration, m_session, _1, _2, _3));
}
