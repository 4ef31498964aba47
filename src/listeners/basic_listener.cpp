#include "basic_listener.h"

#include "answers.h"
#include "http_method.h"
#include "messages.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

constexpr wchar_t kLocateTimeoutDescription[] =
    L"Defines timeout for LED Locate in seconds. When LED for port is on, it will flash for this amount of "
    L"time and then turns off.";
constexpr wchar_t kLocateTimeoutType[] = L"integer";
constexpr wchar_t kVolumeObjectType[] = L"VOLUME";

/// The bounds that clients are told and held to, in seconds; both inclusive.
constexpr std::int64_t kMinTimeout = 1;
constexpr std::int64_t kMaxTimeout = 3600;

ServiceObject operationOf(const Volume& volume) {
  return PublishedForm()
      .text(keys::kObjectId, volume.id())
      .text(keys::kAction, toText(volume.state()))
      .text(keys::kObjectName, volume.name())
      .text(keys::kObjectType, kVolumeObjectType)
      .take();
}

ServiceObject getState(IMirnSession* session, const RouteMatch&, const RequestParameters& parameters,
                       const ServiceObject&) {
  judgeParameters(parameters);
  // Two reads, so the two members need not come from one snapshot.
  PublishedForm answer;
  answer.text(keys::kState, session->getServiceState());
  answer.part(keys::kInProgress, listOf(session->getVolumesInProgress(), operationOf));
  return answer.take();
}

ServiceObject getVersion(IMirnSession* session, const RouteMatch&, const RequestParameters& parameters,
                         const ServiceObject&) {
  judgeParameters(parameters);
  return session->getVersion().toServiceObject();
}

ServiceObject rescan(IMirnBasicActions* actions, const RouteMatch&, const RequestParameters& parameters,
                     const ServiceObject& body) {
  // Unlike on the other routes, the parameters come first.
  judgeParameters(parameters);
  judgeNullBody(body);
  actions->rescan();
  return ServiceObject::null();
}

ServiceObject getConfiguration(IMirnSession* session, const RouteMatch&, const RequestParameters& parameters,
                               const ServiceObject&) {
  judgeParameters(parameters);
  // The numbers are signed, although the change of the value takes an unsigned one.
  ServiceObject timeout = ServiceObject::object();
  timeout.member(keys::kDescription) = std::wstring(kLocateTimeoutDescription);
  timeout.member(keys::kType) = std::wstring(kLocateTimeoutType);
  timeout.member(keys::kValue) = session->getLocateTimeout();
  timeout.member(keys::kMin) = kMinTimeout;
  timeout.member(keys::kMax) = kMaxTimeout;
  return PublishedForm().part(keys::kLocateTimeout, std::move(timeout)).take();
}

/// Takes any query parameter.
ServiceObject putConfiguration(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                               const ServiceObject& body) {
  judgeBody(body, {optionalUnsigned(keys::kLocateTimeout)});
  requireThat(body.hasKey(keys::kLocateTimeout), kErrorInvalidParameter, kMsgConfigurationEmpty);
  // A number above the signed maximum turns negative here, and is refused as such.
  const std::int64_t seconds = body.member(keys::kLocateTimeout).toInt64();
  requireThat(seconds >= kMinTimeout, kErrorInvalidParameter, kMsgTimeoutTooLow);
  requireThat(seconds <= kMaxTimeout, kErrorInvalidParameter, kMsgTimeoutTooHigh);
  requireThat(session->setLocateTimeout(seconds), kErrorInternal, kMsgTimeoutNotStored);
  return ServiceObject::null();
}

}  // namespace

BasicListener::BasicListener(IMirnSession* session, IMirnBasicActions* actions)
    : m_session(session), m_actions(actions) {
  addRoute(HttpMethod::kGet, L"state", std::bind(getState, m_session, _1, _2, _3));
  addRoute(HttpMethod::kGet, L"version", std::bind(getVersion, m_session, _1, _2, _3));
  addRoute(HttpMethod::kPost, L"rescan", std::bind(rescan, m_actions, _1, _2, _3));
  addRoute(HttpMethod::kGet, L"config", std::bind(getConfiguration, m_session, _1, _2, _3));
  addRoute(HttpMethod::kPut, L"config", std::bind(putConfiguration, m_session, _1, _2, _3));
}
