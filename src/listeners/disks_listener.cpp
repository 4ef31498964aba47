#include "disks_listener.h"

#include "answers.h"
#include "messages.h"
#include "request_words.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

using DiskAction = void (IMirnDisksActions::*)(VEX_HANDLE);

EndDevice requestedDisk(IMirnSession& session, const RouteMatch& match) {
  const std::wstring id = parseIdentifier(match[1].str(), kMsgInvalidDiskId);
  return findEndDevice(session, id, kMsgDiskNotFound);
}

ServiceObject makeDiskResponse(IMirnSession& session, const EndDevice& before) {
  return answerAfterAction([&] {
    const EndDevice disk = findEndDevice(session, before.id(), kMsgInvalidDiskId);
    return formOf(DiskAnswer{disk.id(), changed(before.disk().usage, disk.disk().usage),
                             changed(before.disk().state, disk.disk().state)});
  });
}

ServiceObject clearDisk(IMirnSession* session, IMirnDisksActions* actions, const RouteMatch& match,
                        const RequestParameters&, const ServiceObject&) {
  const EndDevice disk = requestedDisk(*session, match);
  // An unknown type of device passes.
  requireThat(
      disk.deviceType() != DeviceType::NON_DISK_STORAGE && disk.deviceType() != DeviceType::NON_STORAGE,
      kErrorNotSupported, kMsgNotADisk);
  actions->clearMetadata(disk.handle());
  return makeDiskResponse(*session, disk);
}

/// Marks or unmarks; the same words under two error ids.
void changeSpare(IMirnDisksActions& actions, const EndDevice& disk, const std::wstring& action) {
  if (action == request_words::kMark) {
    requireThat(!isX8Disk(disk), kErrorNotSupported, kMsgSpareX8);
    actions.markAsSpare(disk.handle(), 0);
  } else if (action == request_words::kUnmark) {
    requireThat(!isX8Disk(disk), kErrorDiskInvalidState, kMsgSpareX8);
    actions.unmarkAsSpare(disk.handle());
  } else {
    refuse(kErrorInvalidParameter, kMsgInvalidAction);
  }
}

ServiceObject putSpare(IMirnSession* session, IMirnDisksActions* actions, const RouteMatch& match,
                       const RequestParameters&, const ServiceObject& body) {
  const EndDevice disk = requestedDisk(*session, match);
  reportingAsListener([&] { changeSpare(*actions, disk, textOf(body, keys::kAction)); });
  return makeDiskResponse(*session, disk);
}

/// For the actions that leave all judgement of the device to the library.
ServiceObject putUnjudged(IMirnSession* session, IMirnDisksActions* actions, DiskAction action,
                          const RouteMatch& match, const RequestParameters&, const ServiceObject&) {
  const EndDevice disk = requestedDisk(*session, match);
  (actions->*action)(disk.handle());
  return makeDiskResponse(*session, disk);
}

/// Ignores a body.
ServiceObject deleteDisk(IMirnSession* session, IMirnDisksActions* actions, const RouteMatch& match,
                         const RequestParameters&, const ServiceObject&) {
  actions->removeDisk(requestedDisk(*session, match));
  return ServiceObject::null();
}

}  // namespace

DisksListener::DisksListener(IMirnSession* session, IMirnDisksActions* actions)
    : m_session(session), m_actions(actions) {
  addRoute(RouteId::kClearDisk, std::bind(clearDisk, m_session, m_actions, _1, _2, _3));
  addRoute(RouteId::kSetDiskSpare, std::bind(putSpare, m_session, m_actions, _1, _2, _3));
  addRoute(RouteId::kMarkDiskNormal,
           std::bind(putUnjudged, m_session, m_actions, &IMirnDisksActions::markAsNormal, _1, _2, _3));
  addRoute(RouteId::kResetDiskSmart,
           std::bind(putUnjudged, m_session, m_actions, &IMirnDisksActions::resetSmartEvent, _1, _2, _3));
  addRoute(RouteId::kRemoveDisk, std::bind(deleteDisk, m_session, m_actions, _1, _2, _3));
}
