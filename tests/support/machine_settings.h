#ifndef MIRN_TESTS_SUPPORT_MACHINE_SETTINGS_H
#define MIRN_TESTS_SUPPORT_MACHINE_SETTINGS_H

#include <cstdint>
#include <memory>
#include <string>

/// While it lives, this process sees machine-wide settings of its own, with nothing in them at first: a file
/// of the test's, or a part of the registry.
class MachineSettings {
 public:
  MachineSettings();
  MachineSettings(const MachineSettings&) = delete;
  MachineSettings& operator=(const MachineSettings&) = delete;
  ~MachineSettings();

  /// Stores a number under the storage driver's key, which is made when it is missing. Once a name.
  void store(const std::wstring& name, std::uint32_t value);

  /// All there is, to be compared; empty as long as there is nothing.
  std::string image() const;

 private:
  class Place;

  std::unique_ptr<Place> m_place;
};

#endif
