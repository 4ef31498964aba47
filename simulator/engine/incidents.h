#ifndef MIRN_SIMULATOR_ENGINE_INCIDENTS_H
#define MIRN_SIMULATOR_ENGINE_INCIDENTS_H

#include <string_view>

#include "engine/bays.h"
#include "model/machine.h"

/// What befalls devices from outside. Each is refused with `VEX_STATUS_INVALID_STATE` where it cannot happen;
/// the caller settles the machine afterwards.
namespace simulator {

/// The device by its id or its serial number.
EndDevice& findDevice(Machine& machine, std::string_view name);

void failDisk(Machine& machine, EndDevice& disk);
void pullDevice(Machine& machine, EndDevice& device);
void insertDevice(Machine& machine, EndDevice& device);
/// A disk fresh from its maker comes into the bay of `former`, which is out.
const EndDevice& insertBlankDisk(Machine& machine, const EndDevice& former, const BlankDisk& wanted);

void lockDisk(Machine& machine, EndDevice& disk);
void raiseSmartEvent(Machine& machine, EndDevice& disk);

/// The controllers look for devices that were put in unnoticed.
void notice(Machine& machine);

}  // namespace simulator

#endif
