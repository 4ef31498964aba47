#include "support/machine_settings.h"

MachineSettings::MachineSettings(std::uint32_t locateTimeout) : MachineSettings() {
  store(L"LedLocateTimeout", locateTimeout);
}
