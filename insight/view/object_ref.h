#ifndef MIRN_INSIGHT_VIEW_OBJECT_REF_H
#define MIRN_INSIGHT_VIEW_OBJECT_REF_H

#include <string>

namespace insight {

/// Names an object of the machine, or of the service itself.
struct ObjectRef {
  std::string type;   ///< "volume", "disk", "array", "controller", "port" or "service".
  std::wstring id;    ///< Empty for the service.
  std::wstring name;  ///< As people know it.

  friend bool operator==(const ObjectRef& a, const ObjectRef& b) {
    return a.type == b.type && a.id == b.id && a.name == b.name;
  }
};

}  // namespace insight

#endif
