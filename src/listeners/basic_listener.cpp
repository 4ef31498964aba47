#include "basic_listener.h"

#include "answers.h"
#include "configuration.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

constexpr wchar_t kVolumeObjectType[] = L"VOLUME";

ServiceObject operationOf(const Volume& volume) {
  return PublishedForm()
      .text(keys::kObjectId, volume.id())
      .text(keys::kAction, toText(volume.state()))
      .text(keys::kObjectName, volume.name())
      .text(keys::kObjectType, kVolumeObjectType)
      .take();
}

ServiceObject getState(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                       const ServiceObject&) {
  // Two reads, so the two members need not come from one snapshot.
  PublishedForm answer;
  answer.text(keys::kState, session->getServiceState());
  answer.part(keys::kInProgress, listOf(session->getVolumesInProgress(), operationOf));
  return answer.take();
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
