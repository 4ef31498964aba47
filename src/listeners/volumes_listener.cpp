#include "volumes_listener.h"

#include "answers.h"
#include "http_method.h"
#include "messages.h"
#include "requests.h"
#include "volume_answers.h"
#include "volume_name.h"
#include "volume_requests.h"
#include "volume_rules.h"

using namespace std::placeholders;

namespace {

using VolumeAction = void (IMirnVolumesActions::*)(const Volume&);

ServiceObject getVolumes(IMirnSession* session, const RouteMatch&, const RequestParameters& parameters,
                         const ServiceObject&) {
  judgeParameters(parameters);
  return formsOf(session->getVolumes());
}

/// For the actions that leave all judgement of the volume to the library.
ServiceObject putUnjudged(IMirnSession* session, IMirnVolumesActions* actions, VolumeAction action,
                          const RouteMatch& match, const RequestParameters& parameters,
                          const ServiceObject& body) {
  judgeNullRequest(body, parameters);
  const Volume volume = requestedVolume(*session, match);
  (actions->*action)(volume);
  return makeStateResponse(*session, volume);
}

ServiceObject rebuildVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                            const RequestParameters& parameters, const ServiceObject& body) {
  judgeRequest(body, {requiredText(keys::kDiskId)}, parameters);
  const std::wstring volumeId = parseIdentifier(match[1].str(), kMsgInvalidVolumeId);
  const std::wstring diskId = parseIdentifier(textOf(body, keys::kDiskId), kMsgInvalidDiskId);
  const Volume volume = findVolume(*session, volumeId);
  const EndDevice disk = findDisk(*session, diskId);
  requireThat(!isX8Disk(disk), kErrorNotSupported, kMsgRebuildX8);
  requireThat(volume.sectorSize().logical == disk.disk().logicalSectorSize, kErrorNotSupported,
              kMsgRebuildSectorSize);
  requireThat(volume.state() == VolumeState::DEGRADED, kErrorNotSupported, kMsgRebuildNotDegraded);
  actions->rebuild(volume, disk);
  return makeStateResponse(*session, volume);
}

ServiceObject verifyVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                           const RequestParameters& parameters, const ServiceObject& body) {
  judgeRequest(body, {requiredText(keys::kAction), optionalFlag(keys::kRepair)}, parameters);
  const Volume volume = requestedVolume(*session, match);
  const std::wstring action = textOf(body, keys::kAction);
  if (action == L"START") {
    requireThat(body.hasKey(keys::kRepair), kErrorInvalidParameter, kMsgRepairMissing);
    actions->verify(volume, body.member(keys::kRepair).toBool());
  } else if (action == L"CANCEL") {
    actions->cancelVerify(volume);
  } else {
    refuse(kErrorInvalidParameter, kMsgInvalidAction);
  }
  return makeStateResponse(*session, volume);
}

ServiceObject resizeVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                           const RequestParameters& parameters, const ServiceObject& body) {
  judgeRequest(body, {requiredText(keys::kSize)}, parameters);
  const Volume volume = requestedVolume(*session, match);
  actions->expand(volume, parseSize(textOf(body, keys::kSize), kMsgInvalidSize));
  return makeVolumeResponse(*session, volume, false);
}

bool isCachePolicySupported(IMirnSession& session, const Volume& volume) {
  const Controller controller =
      foundOrRefused(session.findControllerOfVolume(volume.id()), kMsgControllerNotFound);
  return controller.supportedFunctions().volumeSetCachePolicy();
}

ServiceObject setCachePolicy(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                             const RequestParameters& parameters, const ServiceObject& body) {
  judgeRequest(body, {requiredText(keys::kCachePolicy)}, parameters);
  const Volume volume = requestedVolume(*session, match);
  requireThat(isCachePolicySupported(*session, volume), kErrorNotSupported, kMsgNoCachePolicy);
  const CachePolicy policy = cachePolicyFromText(textOf(body, keys::kCachePolicy));
  requireThat(policy != CachePolicy::UNKNOWN, kErrorInvalidParameter, kMsgInvalidCachePolicy);
  actions->setCachePolicy(volume, policy);
  return makeVolumeResponse(*session, volume, false);
}

ServiceObject renameVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                           const RequestParameters& parameters, const ServiceObject& body) {
  judgeRequest(body, {requiredText(keys::kName)}, parameters);
  const Volume volume = requestedVolume(*session, match);
  const std::wstring name = textOf(body, keys::kName);
  validateVolumeName(name, session);
  actions->rename(volume, name);
  return makeNameResponse(*session, name);
}

/// Ignores a body, and puts no condition on the deletion.
ServiceObject deleteVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                           const RequestParameters& parameters, const ServiceObject&) {
  judgeParameters(parameters);
  actions->deleteVolume(requestedVolume(*session, match));
  return ServiceObject::null();
}

}  // namespace

VolumesListener::VolumesListener(IMirnSession* session, IMirnVolumesActions* actions)
    : m_session(session), m_actions(actions) {
  const auto bound = [this](auto handler) { return std::bind(handler, m_session, m_actions, _1, _2, _3); };
  const auto unjudged = [this](VolumeAction action) {
    return std::bind(putUnjudged, m_session, m_actions, action, _1, _2, _3);
  };
  addRoute(HttpMethod::kGet, L"", std::bind(getVolumes, m_session, _1, _2, _3));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/marknormal", unjudged(&IMirnVolumesActions::markAsNormal));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/rebuild", bound(rebuildVolume));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/level", bound(changeLevelRequest));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/init", unjudged(&IMirnVolumesActions::initialize));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/verify", bound(verifyVolume));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/size", bound(resizeVolume));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/cachepolicy", bound(setCachePolicy));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/name", bound(renameVolume));
  addRoute(HttpMethod::kDelete, L"([[:alnum:]]+)", bound(deleteVolume));
  addRoute(HttpMethod::kPost, L"", bound(createVolumeRequest));
  addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/rwh", bound(changeRwhRequest));
}
