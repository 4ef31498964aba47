#include <sstream>

#include "support/machine_settings.h"
#include "support/settings_file.h"
#include "text.h"

namespace {

constexpr char kDriverSection[] = "[SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device]\n";

}  // namespace

class MachineSettings::Place : public SettingsFile {};

MachineSettings::MachineSettings() : m_place(std::make_unique<Place>()) {}

MachineSettings::~MachineSettings() = default;

void MachineSettings::store(const std::wstring& name, std::uint32_t value) {
  std::ostringstream text;
  text << (m_place->exists() ? m_place->text() : kDriverSection) << wideToUtf8(name) << '=' << value << '\n';
  m_place->write(text.str());
}

std::string MachineSettings::image() const { return m_place->text(); }
