#ifndef MIRN_COMMON_CONTROLLER_BUILDER_H
#define MIRN_COMMON_CONTROLLER_BUILDER_H

#include <cstdint>
#include <string>
#include <utility>

#include "builder.h"
#include "controller.h"

/// A forgotten field is stopped by an assertion.
class Controller::Builder : public ModelBuilder<Controller::Builder, Controller> {
 public:
  Builder() : ModelBuilder(Controller()) {}

  Builder& id(SharedText value) { return set<&Controller::m_id>(std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<&Controller::m_handle>(value); }
  Builder& raidHandle(VEX_HANDLE value) { return set<&Controller::m_raidHandle>(value); }
  Builder& address(SharedText value) { return set<&Controller::m_address>(std::move(value)); }
  Builder& name(SharedText value) { return set<&Controller::m_name>(std::move(value)); }
  Builder& type(ControllerType value) { return set<&Controller::m_type>(value); }
  Builder& mode(ControllerMode value) { return set<&Controller::m_mode>(value); }
  Builder& version(SharedText value) { return set<&Controller::m_version>(std::move(value)); }
  Builder& availableDisks(std::uint64_t value) { return set<&Controller::m_availableDisks>(value); }
  Builder& availableDevices(std::uint64_t value) { return set<&Controller::m_availableDevices>(value); }
  Builder& disableESataSpanning(bool value) { return set<&Controller::m_disableESataSpanning>(value); }
  Builder& pciIds(PciIds value) { return set<&Controller::m_pciIds>(value); }
  Builder& preboot(Preboot value) { return set<&Controller::m_preboot>(std::move(value)); }
  Builder& xorSwitch(Switch value) { return set<&Controller::m_xor>(value); }
  Builder& nvsramSupported(bool value) { return set<&Controller::m_nvsramSupported>(value); }
  Builder& supportedFunctions(Functions value) { return set<&Controller::m_supportedFunctions>(value); }
  Builder& readPatrol(Switch value) { return set<&Controller::m_readPatrol>(value); }
  Builder& rohi(Switch value) { return set<&Controller::m_rohi>(value); }

  Controller build() const;
};

using ControllerBuilder = Controller::Builder;

/// A forgotten field raises `Controller::Functions::InitializationException`.
class Controller::Functions::Builder
    : public ModelBuilder<Controller::Functions::Builder, Controller::Functions> {
 public:
  Builder() : ModelBuilder(Functions()) {}

  Builder& portLocate(bool value) { return set<&Functions::m_portLocate>(value); }
  Builder& function420(bool value) { return set<&Functions::m_function420>(value); }
  Builder& markAsNormal(bool value) { return set<&Functions::m_markAsNormal>(value); }
  Builder& volumeDelete(bool value) { return set<&Functions::m_volumeDelete>(value); }
  Builder& arrayCreate(bool value) { return set<&Functions::m_arrayCreate>(value); }
  Builder& volumeModify(bool value) { return set<&Functions::m_volumeModify>(value); }
  Builder& volumeRename(bool value) { return set<&Functions::m_volumeRename>(value); }
  Builder& addDisksToArray(bool value) { return set<&Functions::m_addDisksToArray>(value); }
  Builder& volumeSetCachePolicy(bool value) { return set<&Functions::m_volumeSetCachePolicy>(value); }
  Builder& volumeCancelVerify(bool value) { return set<&Functions::m_volumeCancelVerify>(value); }
  Builder& markAsSpare(bool value) { return set<&Functions::m_markAsSpare>(value); }

  Functions build() const;
};

#endif
