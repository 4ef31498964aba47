#include <algorithm>

#include "find_by_id.h"
#include "lookup.h"
#include "mirn_exception.h"
#include "mirn_session.h"
#include "session_messages.h"

namespace {

constexpr char kControllerNotFound[] = "Controller identifier not found";

}  // namespace

template <class Member>
Member MirnSession::copyOf(Member MirnSnapshot::*member) {
  const SharedOwnership ownership = acquireShared(m_mutex, m_lockTimeout);
  return m_snapshot.*member;
}

template <class Object>
std::vector<Object> MirnSession::objectsOfController(const std::wstring& controllerId,
                                                     std::vector<Object> MirnSnapshot::*objects,
                                                     MirnSnapshot::IdLists MirnSnapshot::*idLists) {
  const SharedOwnership ownership = acquireShared(m_mutex, m_lockTimeout);
  findById(m_snapshot.controllers, controllerId, kErrorObjectNotFound, kControllerNotFound);
  const std::vector<std::wstring>& ids = lookUp(m_snapshot.*idLists, controllerId);

  std::vector<Object> result;
  for (const Object& object : m_snapshot.*objects) {
    // The snapshot keeps these lists sorted.
    if (std::binary_search(ids.begin(), ids.end(), object.id())) result.push_back(object);
  }
  return result;
}

std::vector<Raid> MirnSession::getRaids() { return copyOf(&MirnSnapshot::raids); }

std::vector<RaidLevelSupport> MirnSession::getRaidLevels(const std::wstring& raidId) {
  const SharedOwnership ownership = acquireShared(m_mutex, m_lockTimeout);
  std::vector<RaidLevelSupport> levels;
  for (const auto& entry : lookUp(m_snapshot.raidLevels, raidId)) levels.push_back(entry.second);
  return levels;
}

RaidLevelSupport MirnSession::getRaidLevel(const std::wstring& raidId, RaidLevel level) {
  const SharedOwnership ownership = acquireShared(m_mutex, m_lockTimeout);
  return lookUp(lookUp(m_snapshot.raidLevels, raidId), level);
}

std::vector<Controller> MirnSession::getControllers() { return copyOf(&MirnSnapshot::controllers); }

std::vector<Array> MirnSession::getControllerArrays(const std::wstring& controllerId) {
  return objectsOfController(controllerId, &MirnSnapshot::arrays, &MirnSnapshot::controllerArrays);
}

std::vector<Port> MirnSession::getControllerPorts(const std::wstring& controllerId) {
  return objectsOfController(controllerId, &MirnSnapshot::ports, &MirnSnapshot::controllerPorts);
}

std::vector<Volume> MirnSession::getControllerVolumes(const std::wstring& controllerId) {
  return objectsOfController(controllerId, &MirnSnapshot::volumes, &MirnSnapshot::controllerVolumes);
}

std::vector<Array> MirnSession::getArrays() { return copyOf(&MirnSnapshot::arrays); }

std::vector<EndDevice> MirnSession::getEndDevices() { return copyOf(&MirnSnapshot::endDevices); }

std::vector<Port> MirnSession::getPorts() { return copyOf(&MirnSnapshot::ports); }

std::vector<Volume> MirnSession::getVolumes() { return copyOf(&MirnSnapshot::volumes); }

Version MirnSession::getVersion() {
  const SharedOwnership ownership = acquireShared(m_mutex, m_lockTimeout);
  if (!m_snapshot.version) throw MirnException(kErrorOperationFailed, kMsgNoVersion);
  return *m_snapshot.version;
}
