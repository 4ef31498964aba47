#include "arrays_listener.h"

#include "answers.h"
#include "messages.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

Array requestedArray(IMirnSession& session, const RouteMatch& match) {
  return findArray(session, parseIdentifier(match[1].str(), kMsgInvalidArrayId));
}

ServiceObject getArrays(IMirnSession* session, const RouteMatch&, const RequestParameters&,
                        const ServiceObject&) {
  return formsOf(session->getArrays());
}

ServiceObject getArrayEndDevices(IMirnSession* session, const RouteMatch& match, const RequestParameters&,
                                 const ServiceObject&) {
  const Array array = requestedArray(*session, match);
  return formsOf(session->getArrayEndDevices(array.id()));
}

ServiceObject getArrayVolumes(IMirnSession* session, const RouteMatch& match, const RequestParameters&,
                              const ServiceObject&) {
  const Array array = requestedArray(*session, match);
  return formsOf(session->getArrayVolumes(array.id()));
}

/// An array without volumes has nothing to compare with.
void requireFitting(const EndDevice& disk, const std::vector<Volume>& volumes) {
  for (const Volume& volume : volumes) {
    requireThat(volume.sectorSize().logical == disk.disk().logicalSectorSize, kErrorNotSupported,
                kMsgAddDiskSectorSize);
    requireThat(!isX8Disk(disk) || volume.raidLevel() == RaidLevel::RAID_0, kErrorNotSupported,
                kMsgAddX8Disk);
  }
}

ServiceObject makeArrayDisksResponse(IMirnSession& session, const Array& before) {
  return answerAfterAction([&] {
    const Array array = findArray(session, before.id());
    return formOf(ArrayDisksAnswer{array.id(), idsOf(session.getArrayEndDevices(array.id()))});
  });
}

ServiceObject makeArrayCacheResponse(IMirnSession& session, const Array& before) {
  return answerAfterAction([&] {
    const Array array = findArray(session, before.id());
    return formOf(ArrayCacheAnswer{array.id(), changed(before.writeCachePolicy(), array.writeCachePolicy())});
  });
}

ServiceObject addDisks(IMirnSession* session, IMirnArraysActions* actions, const RouteMatch& match,
                       const RequestParameters&, const ServiceObject& body) {
  const Array array = requestedArray(*session, match);
  const std::vector<Volume> volumes = session->getArrayVolumes(array.id());
  std::vector<EndDevice> disks;
  for (const auto& found : session->findEndDevices(textsOf(body, keys::kDisks))) {
    const EndDevice disk = foundOrRefused(found, kMsgInvalidDiskId);
    requireFitting(disk, volumes);
    disks.push_back(disk);
  }
  actions->addDisks(array.handle(), disks);
  return makeArrayDisksResponse(*session, array);
}

ServiceObject setWriteCache(IMirnSession* session, IMirnArraysActions* actions, const RouteMatch& match,
                            const RequestParameters&, const ServiceObject& body) {
  const Array array = requestedArray(*session, match);
  requireThat(array.writeCachePolicy() != WriteCacheState::NOT_SUPPORTED, kErrorNotSupported,
              kMsgNoWriteCache);
  const EnableState state = requestedState(body);
  actions->setWriteCacheState(array.handle(), state);
  return makeArrayCacheResponse(*session, array);
}

}  // namespace

ArraysListener::ArraysListener(IMirnSession* session, IMirnArraysActions* actions)
    : m_session(session), m_actions(actions) {
  addRoute(RouteId::kListArrays, std::bind(getArrays, m_session, _1, _2, _3));
  addRoute(RouteId::kListArrayDevices, std::bind(getArrayEndDevices, m_session, _1, _2, _3));
  addRoute(RouteId::kListArrayVolumes, std::bind(getArrayVolumes, m_session, _1, _2, _3));
  addRoute(RouteId::kAddArrayDisks, std::bind(addDisks, m_session, m_actions, _1, _2, _3));
  addRoute(RouteId::kSetArrayWriteCache, std::bind(setWriteCache, m_session, m_actions, _1, _2, _3));
}
