#ifndef MIRN_PLATFORM_SETTINGS_STORE_H
#define MIRN_PLATFORM_SETTINGS_STORE_H

#include <boost/optional.hpp>
#include <cstdint>
#include <memory>
#include <string>

/// The machine-wide settings: the system registry on Windows, an INI file elsewhere.
///
/// Off Windows the file's path is taken from the environment variable MIRN_REGISTRY, else it is
/// /etc/mirn/registry.ini. A section is a key's path, an entry in it a value by its name.

enum class SettingsAccess { kRead, kWrite };

/// One open key, closed when it is destroyed. Belongs to one thread at a time.
class ISettingsKey {
 public:
  virtual ~ISettingsKey() = default;

  /// The value called `name`; none when it is absent or no unsigned 32-bit number.
  virtual boost::optional<std::uint32_t> read(const std::wstring& name) const = 0;

  /// True when the store took the value. On false the store is as it was.
  virtual bool write(const std::wstring& name, std::uint32_t value) = 0;
};

/// Safe to be used by several threads at once. No operation raises on a failure of the store.
class ISettingsStore {
 public:
  virtual ~ISettingsStore() = default;

  /// The key under `path` in the machine-wide part of the store; null when it cannot be opened, for example
  /// because the caller has no right to.
  virtual std::unique_ptr<ISettingsKey> open(const std::wstring& path, SettingsAccess access) = 0;
};

/// The settings store of this platform.
std::unique_ptr<ISettingsStore> makeSettingsStore();

#endif
