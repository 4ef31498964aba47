#include "known_texts.h"

#include "enddevice.h"

std::wstring vendorIdFromField(std::string_view field) {
  return EndDevice::vendorIdOf(wideFromNarrow(field));
}

void KnownTexts::startOver() {
  ids.startOver();
  addresses.startOver();
  controllerNames.startOver();
  controllerVersions.startOver();
  arrayNames.startOver();
  volumeNames.startOver();
  vendorIds.startOver();
  serialNumbers.startOver();
  models.startOver();
  firmwares.startOver();
}
