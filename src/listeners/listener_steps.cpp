#include "listener_steps.h"

#include <boost/regex.hpp>

#include "messages.h"
#include "text.h"

void refuse(const char* errorId, const std::wstring& message) {
  throw ListenerException(errorId, wideToUtf8(message));
}

void requireThat(bool condition, const char* errorId, const std::wstring& message) {
  if (!condition) refuse(errorId, message);
}

std::wstring parseIdentifier(const std::wstring& text, const std::wstring& message) {
  static const boost::wregex pattern(L"[[:alnum:]]+");
  requireThat(boost::regex_match(text, pattern), kErrorInvalidParameter, message);
  return text;
}

Volume findVolume(IMirnSession& session, const std::wstring& id) {
  return foundOrRefused(session.findVolume(id), kMsgVolumeNotFound);
}

Volume findVolumeByName(IMirnSession& session, const std::wstring& name) {
  return foundOrRefused(session.findVolumeByName(name), kMsgVolumeNameNotFound);
}

Array findArray(IMirnSession& session, const std::wstring& id) {
  return foundOrRefused(session.findArray(id), kMsgArrayNotFound);
}

Controller findController(IMirnSession& session, const std::wstring& id) {
  return foundOrRefused(session.findController(id), kMsgControllerNotFound);
}

EndDevice findDisk(IMirnSession& session, const std::wstring& id) {
  const EndDevice device = findEndDevice(session, id, kMsgDiskNotFound);
  requireThat(device.deviceType() == DeviceType::DISK, kErrorInvalidParameter, kMsgDiskNotFound);
  return device;
}

EndDevice findEndDevice(IMirnSession& session, const std::wstring& id, const std::wstring& message) {
  return foundOrRefused(session.findEndDevice(id), message);
}

bool isX8Disk(const EndDevice& device) {
  return device.disk().x8Disk == X8Disk::X8_A || device.disk().x8Disk == X8Disk::X8_B;
}
