#include "volumes_listener.h"

#include "answers.h"
#include "messages.h"
#include "request_words.h"
#include "requests.h"
#include "volume_answers.h"
#include "volume_name.h"
#include "volume_requests.h"
#include "volume_rules.h"

using namespace std::placeholders;

namespace {

using VolumeAction = void (IMirnVolumesActions::*)(const Volume&);

ServiceObject getVolumes(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                         const ServiceObject&) {
  return formsOf(session->getVolumes());
}

/// For the actions that leave all judgement of the volume to the library.
ServiceObject putUnjudged(IMirnSession* session, IMirnVolumesActions* actions, VolumeAction action,
                          const RouteMatch& match, const RequestParameters&, const ServiceObject&) {
  const Volume volume = requestedVolume(*session, match);
  (actions->*action)(volume);
  return makeStateResponse(*session, volume);
}

ServiceObject rebuildVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                            const RequestParameters&, const ServiceObject& body) {
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
                           const RequestParameters&, const ServiceObject& body) {
  const Volume volume = requestedVolume(*session, match);
  const std::wstring action = textOf(body, keys::kAction);
  if (action == request_words::kStart) {
    requireThat(body.hasKey(keys::kRepair), kErrorInvalidParameter, kMsgRepairMissing);
    actions->verify(volume, body.member(keys::kRepair).toBool());
  } else if (action == request_words::kCancel) {
    actions->cancelVerify(volume);
  } else {
    refuse(kErrorInvalidParameter, kMsgInvalidAction);
  }
  return makeStateResponse(*session, volume);
}

ServiceObject resizeVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                           const RequestParameters&, const ServiceObject& body) {
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
                             const RequestParameters&, const ServiceObject& body) {
  const Volume volume = requestedVolume(*session, match);
  requireThat(isCachePolicySupported(*session, volume), kErrorNotSupported, kMsgNoCachePolicy);
  const CachePolicy policy = cachePolicyFromText(textOf(body, keys::kCachePolicy));
  requireThat(policy != CachePolicy::UNKNOWN, kErrorInvalidParameter, kMsgInvalidCachePolicy);
  actions->setCachePolicy(volume, policy);
  return makeVolumeResponse(*session, volume, false);
}

ServiceObject renameVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                           const RequestParameters&, const ServiceObject& body) {
  const Volume volume = requestedVolume(*session, match);
  const std::wstring name = textOf(body, keys::kName);
  validateVolumeName(name, session);
  actions->rename(volume, name);
  return makeNameResponse(*session, name);
}

/// Ignores a body, and puts no condition on the deletion.
ServiceObject deleteVolume(IMirnSession* session, IMirnVolumesActions* actions, const RouteMatch& match,
                           const RequestParameters&, const ServiceObject&) {
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
  addRoute(RouteId::kListVolumes, std::bind(getVolumes, m_session, _1, _2, _3));
  addRoute(RouteId::kMarkVolumeNormal, unjudged(&IMirnVolumesActions::markAsNormal));
  addRoute(RouteId::kRebuildVolume, bound(rebuildVolume));
  addRoute(RouteId::kChangeVolumeLevel, bound(changeLevelRequest));
  addRoute(RouteId::kInitializeVolume, unjudged(&IMirnVolumesActions::initialize));
  addRoute(RouteId::kVerifyVolume, bound(verifyVolume));
  addRoute(RouteId::kResizeVolume, bound(resizeVolume));
  addRoute(RouteId::kSetVolumeCachePolicy, bound(setCachePolicy));
  addRoute(RouteId::kRenameVolume, bound(renameVolume));
  addRoute(RouteId::kDeleteVolume, bound(deleteVolume));
  addRoute(RouteId::kCreateVolume, bound(createVolumeRequest));
  addRoute(RouteId::kSetVolumeWriteHolePolicy, bound(changeRwhRequest));
}
