#ifndef MIRN_COMMON_CONTROLLER_BUILDER_H
#define MIRN_COMMON_CONTROLLER_BUILDER_H

#include <cstdint>
#include <string>
#include <utility>

#include "builder.h"
#include "controller.h"

/// A forgotten field is stopped by an assertion.
class Controller::Builder : public ModelBuilder<Controller::Builder, Controller, 18> {
 public:
  Builder() : ModelBuilder(Controller()) {}

  Builder& id(std::wstring value) { return set<0>(m_object.m_id, std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<1>(m_object.m_handle, value); }
  Builder& raidHandle(VEX_HANDLE value) { return set<2>(m_object.m_raidHandle, value); }
  Builder& address(std::wstring value) { return set<3>(m_object.m_address, std::move(value)); }
  Builder& name(std::wstring value) { return set<4>(m_object.m_name, std::move(value)); }
  Builder& type(ControllerType value) { return set<5>(m_object.m_type, value); }
  Builder& mode(ControllerMode value) { return set<6>(m_object.m_mode, value); }
  Builder& version(std::wstring value) { return set<7>(m_object.m_version, std::move(value)); }
  Builder& availableDisks(std::uint64_t value) { return set<8>(m_object.m_availableDisks, value); }
  Builder& availableDevices(std::uint64_t value) { return set<9>(m_object.m_availableDevices, value); }
  Builder& disableESataSpanning(bool value) { return set<10>(m_object.m_disableESataSpanning, value); }
  Builder& pciIds(PciIds value) { return set<11>(m_object.m_pciIds, value); }
  Builder& preboot(Preboot value) { return set<12>(m_object.m_preboot, std::move(value)); }
  Builder& xorSwitch(Switch value) { return set<13>(m_object.m_xor, value); }
  Builder& nvsramSupported(bool value) { return set<14>(m_object.m_nvsramSupported, value); }
  Builder& supportedFunctions(Functions value) { return set<15>(m_object.m_supportedFunctions, value); }
  Builder& readPatrol(Switch value) { return set<16>(m_object.m_readPatrol, value); }
  Builder& rohi(Switch value) { return set<17>(m_object.m_rohi, value); }

  Controller build() const;
};

using ControllerBuilder = Controller::Builder;

/// A forgotten field raises `Controller::Functions::InitializationException`.
class Controller::Functions::Builder
    : public ModelBuilder<Controller::Functions::Builder, Controller::Functions, 11> {
 public:
  Builder() : ModelBuilder(Functions()) {}

  Builder& portLocate(bool value) { return set<0>(m_object.m_portLocate, value); }
  Builder& function420(bool value) { return set<1>(m_object.m_function420, value); }
  Builder& markAsNormal(bool value) { return set<2>(m_object.m_markAsNormal, value); }
  Builder& volumeDelete(bool value) { return set<3>(m_object.m_volumeDelete, value); }
  Builder& arrayCreate(bool value) { return set<4>(m_object.m_arrayCreate, value); }
  Builder& volumeModify(bool value) { return set<5>(m_object.m_volumeModify, value); }
  Builder& volumeRename(bool value) { return set<6>(m_object.m_volumeRename, value); }
  Builder& addDisksToArray(bool value) { return set<7>(m_object.m_addDisksToArray, value); }
  Builder& volumeSetCachePolicy(bool value) { return set<8>(m_object.m_volumeSetCachePolicy, value); }
  Builder& volumeCancelVerify(bool value) { return set<9>(m_object.m_volumeCancelVerify, value); }
  Builder& markAsSpare(bool value) { return set<10>(m_object.m_markAsSpare, value); }

  Functions build() const;
};

#endif
