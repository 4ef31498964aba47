#ifndef MIRN_SESSION_PLUGIN_SETTING_H
#define MIRN_SESSION_PLUGIN_SETTING_H

#include <cstdint>
#include <vector>

#include "read_interface.h"

/// One setting of the plug-in: a number in the machine's settings store that clients read and change.
/// Reading, judging and publishing know no more of it than this row.
struct PluginSetting {
  /// The place in the store: the path of the key, and the name of the value in it.
  const wchar_t* storeKey;
  const wchar_t* storeName;

  /// All within unsigned 32 bits, as the store keeps the value; the bounds are inclusive.
  std::int64_t byDefault;  ///< While the store gives nothing usable.
  std::int64_t least;
  std::int64_t most;

  /// What clients call it, and what they are told of it.
  const wchar_t* key;
  const wchar_t* description;
  const wchar_t* type;
  const wchar_t* unit;  ///< "s"; null for a bare number.

  /// Why a change is refused.
  const wchar_t* tooLow;
  const wchar_t* tooHigh;
  const wchar_t* notStored;

  /// Logged when the stored value is out of bounds.
  const wchar_t* defaultTaken;

  /// The session's operations on it.
  std::int64_t (IMirnSession::*get)();
  bool (IMirnSession::*set)(std::int64_t value);

  constexpr bool allows(std::int64_t value) const { return value >= least && value <= most; }
};

using PluginSettings = std::vector<PluginSetting>;

/// The time that a locate LED flashes, in seconds.
constexpr std::int64_t kLocateTimeoutDefault = 12;
constexpr std::int64_t kLocateTimeoutMin = 1;
constexpr std::int64_t kLocateTimeoutMax = 3600;
extern const PluginSetting kLocateTimeoutSetting;

/// All settings, in the order in which a change of several is judged and stored.
const PluginSettings& pluginSettings();

#endif
