#include "rehearsed_session.h"

#include <algorithm>
#include <utility>

#include "plugin_setting.h"

namespace {

constexpr wchar_t kArray[] = L"array";
constexpr wchar_t kController[] = L"controller";
constexpr wchar_t kDisk[] = L"disk";
constexpr wchar_t kPort[] = L"port";
constexpr wchar_t kRaid[] = L"raid";
constexpr wchar_t kVolume[] = L"volume";

}  // namespace

RehearsedSession::RehearsedSession(Picture picture, std::int64_t locateTimeout)
    : m_picture(std::move(picture)), m_locateTimeout(locateTimeout) {}

bool RehearsedSession::setLocateTimeout(std::int64_t seconds) {
  if (!kLocateTimeoutSetting.allows(seconds)) return false;
  m_deed.settings[kLocateTimeoutSetting.key] = seconds;
  return true;
}

void RehearsedSession::carryOut(const PreparedCall& call) {
  m_deed.call = call;
  throw EndOfRehearsal();
}

void RehearsedSession::keep(const wchar_t* type, const std::wstring& id) {
  const bool isKept = std::any_of(
      m_deed.objects.begin(), m_deed.objects.end(),
      [&](const RehearsedDeed::NamedObject& object) { return object.type == type && object.id == id; });
  if (!isKept) m_deed.objects.push_back({type, id});
}

template <class Object>
boost::optional<Object> RehearsedSession::kept(const wchar_t* type, boost::optional<Object> found) {
  if (found) keep(type, found->id());
  return found;
}

std::vector<Array> RehearsedSession::getControllerArrays(const std::wstring& controllerId) {
  std::vector<Array> arrays = SnapshotReads::getControllerArrays(controllerId);
  keep(kController, controllerId);
  return arrays;
}

std::vector<Port> RehearsedSession::getControllerPorts(const std::wstring& controllerId) {
  std::vector<Port> ports = SnapshotReads::getControllerPorts(controllerId);
  keep(kController, controllerId);
  return ports;
}

std::vector<Volume> RehearsedSession::getControllerVolumes(const std::wstring& controllerId) {
  std::vector<Volume> volumes = SnapshotReads::getControllerVolumes(controllerId);
  keep(kController, controllerId);
  return volumes;
}

boost::optional<Raid> RehearsedSession::findRaid(const std::wstring& id) {
  return kept(kRaid, SnapshotReads::findRaid(id));
}

boost::optional<Controller> RehearsedSession::findController(const std::wstring& id) {
  return kept(kController, SnapshotReads::findController(id));
}

boost::optional<Array> RehearsedSession::findArray(const std::wstring& id) {
  return kept(kArray, SnapshotReads::findArray(id));
}

boost::optional<EndDevice> RehearsedSession::findEndDevice(const std::wstring& id) {
  return kept(kDisk, SnapshotReads::findEndDevice(id));
}

std::vector<boost::optional<EndDevice>> RehearsedSession::findEndDevices(
    const std::vector<std::wstring>& ids) {
  std::vector<boost::optional<EndDevice>> found = SnapshotReads::findEndDevices(ids);
  for (const auto& device : found) {
    if (device) keep(kDisk, device->id());
  }
  return found;
}

boost::optional<Port> RehearsedSession::findPort(const std::wstring& id) {
  return kept(kPort, SnapshotReads::findPort(id));
}

boost::optional<Volume> RehearsedSession::findVolume(const std::wstring& id) {
  return kept(kVolume, SnapshotReads::findVolume(id));
}
