#include "enddevices_listener.h"

#include "answers.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

ServiceObject getEndDevices(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                            const ServiceObject&) {
  return formsOf(session->getEndDevices());
}

}  // namespace

EndDevicesListener::EndDevicesListener(IMirnSession* session) : m_session(session) {
  addRoute(RouteId::kListDevices, std::bind(getEndDevices, m_session, _1, _2, _3));
}
