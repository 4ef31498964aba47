#include "listener_steps.h"

#include <boost/regex.hpp>

#include "find_by_id.h"
#include "messages.h"
#include "text.h"

void refuse(const char* errorId, const std::wstring& message) {
  throw ListenerException(errorId, wideToUtf8(message));
}

void requireThat(bool condition, const char* errorId, const std::wstring& message) {
  if (!condition) refuse(errorId, message);
}

std::wstring parseIdentifier(const std::wstring& text, const std::wstring& message) {
  requireThat(boost::regex_match(text, boost::wregex(L"[[:alnum:]]+")), kErrorInvalidParameter, message);
  return text;
}

Volume findVolume(IMirnSession& session, const std::wstring& id) {
  const std::vector<Volume> volumes = session.getVolumes();
  return findById(volumes, id, kErrorObjectNotFound, kMsgVolumeNotFound);
}

Volume findVolumeByName(IMirnSession& session, const std::wstring& name) {
  for (const Volume& volume : session.getVolumes()) {
    if (volume.name() == name) return volume;
  }
  refuse(kErrorObjectNotFound, kMsgVolumeNameNotFound);
}

Array findArray(IMirnSession& session, const std::wstring& id) {
  const std::vector<Array> arrays = session.getArrays();
  return findById(arrays, id, kErrorObjectNotFound, kMsgArrayNotFound);
}

Controller findController(IMirnSession& session, const std::wstring& id) {
  const std::vector<Controller> controllers = session.getControllers();
  return findById(controllers, id, kErrorObjectNotFound, kMsgControllerNotFound);
}

EndDevice findDisk(IMirnSession& session, const std::wstring& id) {
  const EndDevice device = findEndDevice(session.getEndDevices(), id, kMsgDiskNotFound);
  requireThat(device.deviceType() == DeviceType::DISK, kErrorInvalidParameter, kMsgDiskNotFound);
  return device;
}

EndDevice findEndDevice(const std::vector<EndDevice>& devices, const std::wstring& id,
                        const std::wstring& message) {
  return findById(devices, id, kErrorObjectNotFound, message);
}

bool isX8Disk(const EndDevice& device) {
  return device.disk().x8Disk == X8Disk::X8_A || device.disk().x8Disk == X8Disk::X8_B;
}
