#include "event_words.h"

std::wstring diskSourceName(DiskType type, const std::wstring& serialNumber) {
  return toText(type) + L" " + serialNumber;
}

std::wstring diskSentence(const std::wstring& name, const std::wstring& address, DiskEventType type) {
  return name + L" at " + address + L" " + descriptionText(type);
}

std::wstring volumeSentence(const std::wstring& name, VolumeEventType type) {
  return name + L" " + descriptionText(type);
}
