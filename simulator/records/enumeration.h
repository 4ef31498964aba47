#ifndef MIRN_SIMULATOR_RECORDS_ENUMERATION_H
#define MIRN_SIMULATOR_RECORDS_ENUMERATION_H

#include <vector>

#include "model/machine.h"

/// The handles that the library lists, ascending. A scope that the kind does not have is refused with
/// `VEX_STATUS_INVALID_SCOPE`, a scope handle that names no controller with `VEX_STATUS_INVALID_HANDLE`. The
/// work grows with the answer.
namespace simulator {

std::vector<Handle> listControllers(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle);
std::vector<Handle> listEndDevices(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle);
std::vector<Handle> listPhys(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle);
std::vector<Handle> listArrays(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle);
std::vector<Handle> listVolumes(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle);
std::vector<Handle> listPorts(const Machine& machine, VEX_SCOPE_TYPE scope, Handle scopeHandle);
std::vector<Handle> listEngines(const Machine& machine);

}  // namespace simulator

#endif
