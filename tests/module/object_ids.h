#ifndef MIRN_TESTS_MODULE_OBJECT_IDS_H
#define MIRN_TESTS_MODULE_OBJECT_IDS_H

#include <string>
#include <vector>

#include "identifiers.h"
#include "support/body.h"
#include "VEXL2.h"

/// What the module calls an object of a scripted machine. `kind` is the first word of its `uniqueId`,
/// such as "disk".
inline std::wstring idOf(const std::string& kind, VEX_HANDLE handle) {
  return idFromUniqueId(kind + "-" + std::to_string(handle));
}

/// A field of a body that names an object.
inline BodyField idField(const char* key, const std::wstring& id) { return {key, ServiceObject(id)}; }

/// The ids of disks, for a body.
inline ServiceObject diskIds(const std::vector<VEX_HANDLE>& disks) {
  ServiceObject ids = ServiceObject::array();
  for (std::size_t i = 0; i < disks.size(); ++i) ids.at(i) = idOf("disk", disks[i]);
  return ids;
}

#endif
