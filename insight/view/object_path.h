#ifndef MIRN_INSIGHT_VIEW_OBJECT_PATH_H
#define MIRN_INSIGHT_VIEW_OBJECT_PATH_H

#include <optional>
#include <string>
#include <vector>

#include "view/machine_view.h"
#include "view/object_ref.h"

/// Objects by the names that people know them by, and where they hang. A disk is called as in events: its
/// type and its serial number.

namespace insight {

ObjectRef refOf(const ControllerView& controller);
ObjectRef refOf(const ArrayView& array);
ObjectRef refOf(const DiskView& disk);
ObjectRef refOf(const VolumeView& volume);

/// The object of a type, as `ObjectRef` calls it, with this id; nothing where there is none. The service's id
/// is "service"; a port has no other name than its id.
std::optional<ObjectRef> objectNamed(const MachineView& machine, const std::wstring& type,
                                     const std::wstring& id);

/// From the controller down to the object, which stands last. An array behind several controllers hangs at
/// the first; what is not in the picture is left out.
std::vector<ObjectRef> pathTo(const MachineView& machine, const ArrayView& array);
std::vector<ObjectRef> pathTo(const MachineView& machine, const DiskView& disk);
std::vector<ObjectRef> pathTo(const MachineView& machine, const VolumeView& volume);

}  // namespace insight

#endif
