#ifndef MIRN_SIMULATOR_RECORDS_RECORDS_H
#define MIRN_SIMULATOR_RECORDS_RECORDS_H

#include "model/machine.h"
#include "VEXL2.h"

/// Fills the library's records from the model. Bytes without a field stay as the caller left them.
namespace simulator {

void fill(const Machine& machine, VEX_SYSTEM_INFO& info);
void fill(const Machine& machine, const Controller& controller, VEX_CONTROLLER_INFO& info);
void fill(const Machine& machine, const EndDevice& device, VEX_END_DEVICE_INFO& info);
void fill(const Machine& machine, const Array& array, VEX_ARRAY_INFO& info);
void fill(const Machine& machine, const Volume& volume, VEX_VOLUME_INFO& info);
void fill(const Machine& machine, const Port& port, VEX_PORT_INFO& info);
void fill(const Machine& machine, const RaidEngine& engine, VEX_RAID_INFO& info);

/// `owner` is the device that the phy belongs to.
void fill(const EndDevice& owner, const Phy& phy, VEX_PHY_INFO& info);

/// `code` is any number: one that names no level of the engine gives a record that says so.
void fillLevel(const Machine& machine, const RaidEngine& engine, std::uint32_t code,
               VEX_RAID_LEVEL_INFO& info);

}  // namespace simulator

#endif
