#include "support/machine_settings.h"
#include "support/private_registry_windows.h"

class MachineSettings::Place : public PrivateRegistry {};

MachineSettings::MachineSettings() : m_place(std::make_unique<Place>()) {}

MachineSettings::~MachineSettings() = default;

void MachineSettings::store(const std::wstring& name, std::uint32_t value) {
  const DWORD data = value;
  m_place->store(kDriverKey, name, REG_DWORD, &data, sizeof data);
}

std::string MachineSettings::image() const { return m_place->image(); }
