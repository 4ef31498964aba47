#include "ports_listener.h"

#include "answers.h"
#include "messages.h"
#include "requests.h"

using namespace std::placeholders;

PortsListener::PortsListener(IMirnSession* session, IMirnPortsActions* actions)
    : m_session(session), m_actions(actions) {
  addRoute(RouteId::kListPorts, std::bind(&PortsListener::getPorts, this, _1, _2, _3));
  addRoute(RouteId::kLocatePort, std::bind(&PortsListener::locatePort, this, _1, _2, _3));
}

ServiceObject PortsListener::getPorts(const RouteMatch&, const RequestParameters&, const ServiceObject&) {
  return formsOf(m_session->getPorts());
}

ServiceObject PortsListener::locatePort(const RouteMatch& match, const RequestParameters&,
                                        const ServiceObject& body) {
  const std::wstring id = parseIdentifier(match[1].str(), kMsgInvalidPortId);
  const Port port = foundOrRefused(m_session->findPort(id), kMsgInvalidPortId);
  const EnableState state = enableStateFromText(textOf(body, keys::kState));
  // The LED is only ever switched on: it goes out by the time-out.
  requireThat(state == EnableState::ENABLED, kErrorInvalidParameter, kMsgInvalidState);
  m_actions->locate(port, state);
  return ServiceObject::null();
}
