#include "enddevices_listener.h"

#include "answers.h"
#include "http_method.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

ServiceObject getEndDevices(IMirnSession* session, const RouteMatch&, const RequestParameters& parameters,
                            const ServiceObject&) {
  judgeParameters(parameters);
  return formsOf(session->getEndDevices());
}

}  // namespace

EndDevicesListener::EndDevicesListener(IMirnSession* session) : m_session(session) {
  addRoute(HttpMethod::kGet, L"", std::bind(getEndDevices, m_session, _1, _2, _3));
}
