#include "controllers_listener.h"

#include <algorithm>
#include <tuple>

#include "answers.h"
#include "messages.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

using SwitchOf = const Controller::Switch& (Controller::*)() const;
using SetSwitch = void (IMirnControllersActions::*)(VEX_HANDLE, EnableState);

/// The main SATA controller comes ahead of the secondary one, whatever their handles.
int sataRank(const Controller& controller) {
  if (controller.type() != ControllerType::SATA) return 0;
  if (controller.name().find(L"sSATA") != std::wstring::npos) return 2;
  return controller.name().find(L"SATA") != std::wstring::npos ? 0 : 1;
}

/// Lyx controllers first, the others by type; by handle within a type.
bool compareControllers(const Controller& a, const Controller& b) {
  const auto key = [](const Controller& controller) {
    return std::make_tuple(controller.type() != ControllerType::Lyx, controller.type(), sataRank(controller),
                           controller.handle());
  };
  return key(a) < key(b);
}

std::wstring requestedId(const RouteMatch& match) {
  return parseIdentifier(match[1].str(), kMsgInvalidControllerId);
}

ServiceObject getControllers(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                             const ServiceObject&) {
  std::vector<Controller> controllers = session->getControllers();
  std::stable_sort(controllers.begin(), controllers.end(), compareControllers);
  return formsOf(controllers);
}

ServiceObject getControllerEndDevices(IMirnSession* session, const RouteMatch& match,
                                      const RequestParameters&, const ServiceObject&) {
  const Controller controller = findController(*session, requestedId(match));
  return formsOf(session->getEndDevices(),
                 [&](const EndDevice& device) { return device.controllerId() == controller.id(); });
}

/// The session finds the controller, and reports an unknown one.
template <class Object>
ServiceObject getObjects(IMirnSession* session,
                         std::vector<Object> (IMirnSession::*read)(const std::wstring&),
                         const RouteMatch& match, const RequestParameters&, const ServiceObject&) {
  return formsOf((session->*read)(requestedId(match)));
}

ServiceObject makeSwitchResponse(IMirnSession& session, const Controller& before, SwitchOf switchOf) {
  return answerAfterAction([&] {
    const Controller controller = findController(session, before.id());
    const auto stateOf = [switchOf](const Controller& of) {
      return (of.*switchOf)().enabled ? EnableState::ENABLED : EnableState::DISABLED;
    };
    return formOf(ControllerSwitchAnswer{controller.id(), changed(stateOf(before), stateOf(controller))});
  });
}

ServiceObject putSwitch(IMirnControllersActions* actions, IMirnSession* session, SetSwitch set,
                        SwitchOf switchOf, const RouteMatch& match, const RequestParameters&,
                        const ServiceObject& body) {
  const Controller controller = findController(*session, requestedId(match));
  const EnableState state = requestedState(body);
  reportingAsListener([&] { (actions->*set)(controller.handle(), state); });
  return makeSwitchResponse(*session, controller, switchOf);
}

}  // namespace

ControllersListener::ControllersListener(IMirnControllersActions* actions, IMirnSession* session)
    : m_actions(actions), m_session(session) {
  addRoute(RouteId::kListControllers, std::bind(getControllers, m_session, _1, _2, _3));
  addRoute(RouteId::kListControllerDevices, std::bind(getControllerEndDevices, m_session, _1, _2, _3));
  addRoute(RouteId::kListControllerArrays,
           std::bind(getObjects<Array>, m_session, &IMirnSession::getControllerArrays, _1, _2, _3));
  addRoute(RouteId::kListControllerPorts,
           std::bind(getObjects<Port>, m_session, &IMirnSession::getControllerPorts, _1, _2, _3));
  addRoute(RouteId::kListControllerVolumes,
           std::bind(getObjects<Volume>, m_session, &IMirnSession::getControllerVolumes, _1, _2, _3));
  addRoute(RouteId::kSetControllerReadPatrol,
           std::bind(putSwitch, m_actions, m_session, &IMirnControllersActions::setReadPatrolState,
                     &Controller::readPatrol, _1, _2, _3));
  addRoute(RouteId::kSetControllerRohi,
           std::bind(putSwitch, m_actions, m_session, &IMirnControllersActions::setRohiState,
                     &Controller::rohi, _1, _2, _3));
}
