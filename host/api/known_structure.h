#ifndef MIRN_HOST_API_KNOWN_STRUCTURE_H
#define MIRN_HOST_API_KNOWN_STRUCTURE_H

#include <cstdint>
#include <string>

#include "plugin_extensions.h"

namespace host {

/// The machine as a client knows it: `"EPOCH.N"` in the fields Mirn-Structure and If-Match.
struct KnownStructure {
  std::wstring epoch;
  std::uint64_t structure = 0;
};

/// Reads it, with its quotation marks. Raises a `Refusal` 400 for anything else.
KnownStructure knownStructureIn(const std::string& field);

std::string structureField(const ovra::PluginPosition& position);

}  // namespace host

#endif
