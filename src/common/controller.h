#ifndef MIRN_COMMON_CONTROLLER_H
#define MIRN_COMMON_CONTROLLER_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "enumerations.h"
#include "field.h"
#include "handle.h"
#include "ServiceObject.h"
#include "shared_text.h"

/// One storage controller, made through `ControllerBuilder` (common/controller_builder.h). Immutable once
/// built, but for the link that the session fills in.
class Controller {
 public:
  class Builder;

  struct PciIds {
    std::uint32_t vendorId = 0;
    std::uint32_t deviceId = 0;
    std::uint32_t subSystemId = 0;
    std::uint32_t hardwareRevisionId = 0;
    std::uint32_t subClassCode = 0;
    std::uint32_t subVendorId = 0;

    template <class Walk>
    static constexpr void fields(Walk& walk) {
      walk(field::hexadecimal<&PciIds::vendorId>(L"vendorId", L"PCI number of its maker."));
      walk(field::hexadecimal<&PciIds::deviceId>(L"deviceId", L"PCI number of its model."));
      walk(field::hexadecimal<&PciIds::subSystemId>(L"subSystemId", L"PCI number of the board."));
      walk(field::number<&PciIds::hardwareRevisionId>(L"hardwareRevisionId", L"Revision of the hardware."));
      walk(field::number<&PciIds::subClassCode>(L"subClassCode", L"PCI subclass: what it works as."));
      walk(field::hexadecimal<&PciIds::subVendorId>(L"subVendorId", L"PCI number of the board's maker."));
    }
  };

  /// The pre-boot manager.
  struct Preboot {
    std::wstring managerVersion;
    bool loaded = false;
    bool twoTbVolumeSupport = false;
    bool twoTbDiskSupport = false;

    template <class Walk>
    static constexpr void fields(Walk& walk) {
      walk(field::text<&Preboot::managerVersion>(L"managerVersion", L"The version of the pre-boot manager."));
      walk(field::flag<&Preboot::loaded>(L"loaded", L"Whether it was loaded when the machine started."));
      walk(field::flag<&Preboot::twoTbVolumeSupport>(L"twoTbVolumeSupport",
                                                     L"Whether it starts from volumes above 2 TB."));
      walk(field::flag<&Preboot::twoTbDiskSupport>(L"twoTbDiskSupport",
                                                   L"Whether it starts from disks above 2 TB."));
    }
  };

  /// A function that a controller may have, and may have on.
  struct Switch {
    bool supported = false;
    bool enabled = false;

    template <class Walk>
    static constexpr void fields(Walk& walk) {
      walk(field::flag<&Switch::supported>(L"supported", L"Whether the controller has the function."));
      walk(field::flag<&Switch::enabled>(L"enabled", L"Whether the function is on."));
    }
  };

  /// What the controller lets a client do.
  class Functions {
   public:
    class Builder;

    /// Raised by the build step for a forgotten field.
    class InitializationException : public std::invalid_argument {
     public:
      using std::invalid_argument::invalid_argument;
    };

    bool portLocate() const { return m_portLocate; }
    bool function420() const { return m_function420; }  ///< Carried, never published.
    bool markAsNormal() const { return m_markAsNormal; }
    bool volumeDelete() const { return m_volumeDelete; }
    bool arrayCreate() const { return m_arrayCreate; }
    bool volumeModify() const { return m_volumeModify; }
    bool volumeRename() const { return m_volumeRename; }
    bool addDisksToArray() const { return m_addDisksToArray; }
    bool volumeSetCachePolicy() const { return m_volumeSetCachePolicy; }
    bool volumeCancelVerify() const { return m_volumeCancelVerify; }
    bool markAsSpare() const { return m_markAsSpare; }

    /// The form that clients see: an object of ten of the eleven flags.
    ovra::data_transfer::ServiceObject toServiceObject() const;

    /// Every field, see field.h.
    template <class Walk>
    static constexpr void fields(Walk& walk);

   private:
    friend class Controller;
    Functions() = default;

    bool m_portLocate = false;
    bool m_function420 = false;
    bool m_markAsNormal = false;
    bool m_volumeDelete = false;
    bool m_arrayCreate = false;
    bool m_volumeModify = false;
    bool m_volumeRename = false;
    bool m_addDisksToArray = false;
    bool m_volumeSetCachePolicy = false;
    bool m_volumeCancelVerify = false;
    bool m_markAsSpare = false;
  };

  const std::wstring& id() const { return m_id; }
  const SharedText& sharedId() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  const std::wstring& raidId() const { return m_raidId; }  ///< Empty for a controller without RAID.
  VEX_HANDLE raidHandle() const { return m_raidHandle; }
  const std::wstring& address() const { return m_address; }  ///< Not published.
  const std::wstring& name() const { return m_name; }
  ControllerType type() const { return m_type; }
  ControllerMode mode() const { return m_mode; }
  const std::wstring& version() const { return m_version; }
  std::uint64_t availableDisks() const { return m_availableDisks; }
  std::uint64_t availableDevices() const { return m_availableDevices; }
  bool disableESataSpanning() const { return m_disableESataSpanning; }
  const PciIds& pciIds() const { return m_pciIds; }
  const Preboot& preboot() const { return m_preboot; }
  const Switch& xorSwitch() const { return m_xor; }
  bool nvsramSupported() const { return m_nvsramSupported; }
  const Functions& supportedFunctions() const { return m_supportedFunctions; }
  const Switch& readPatrol() const { return m_readPatrol; }
  const Switch& rohi() const { return m_rohi; }

  void setRaidId(SharedText id) { m_raidId = std::move(id); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  Controller() = default;

  SharedText m_id;
  VEX_HANDLE m_handle = 0;
  SharedText m_raidId;  // filled by the session
  VEX_HANDLE m_raidHandle = 0;
  SharedText m_address;
  SharedText m_name;
  ControllerType m_type = ControllerType::UNKNOWN;
  ControllerMode m_mode = ControllerMode::UNKNOWN;
  SharedText m_version;
  std::uint64_t m_availableDisks = 0;
  std::uint64_t m_availableDevices = 0;
  bool m_disableESataSpanning = false;
  PciIds m_pciIds;
  Preboot m_preboot;
  Switch m_xor;
  bool m_nvsramSupported = false;
  Functions m_supportedFunctions;
  Switch m_readPatrol;
  Switch m_rohi;
};

template <class Walk>
constexpr void Controller::Functions::fields(Walk& walk) {
  using namespace field;
  walk(flag<&Functions::m_portLocate>(L"portLocate", L"Lights the LED of a port."));
  walk(kept<&Functions::m_function420>(L"function420"));
  walk(flag<&Functions::m_markAsNormal>(L"markAsNormal", L"Takes failed disks and volumes back as normal."));
  walk(flag<&Functions::m_volumeDelete>(L"volumeDelete", L"Deletes volumes."));
  walk(flag<&Functions::m_arrayCreate>(L"arrayCreate", L"Makes arrays."));
  walk(flag<&Functions::m_volumeModify>(L"volumeModify", L"Changes the level and size of volumes."));
  walk(flag<&Functions::m_volumeRename>(L"volumeRename", L"Renames volumes."));
  walk(flag<&Functions::m_addDisksToArray>(L"addDisksToArray", L"Adds disks to arrays."));
  walk(flag<&Functions::m_volumeSetCachePolicy>(L"volumeSetCachePolicy",
                                                L"Changes the cache policy of volumes."));
  walk(flag<&Functions::m_volumeCancelVerify>(L"volumeCancelVerify", L"Cancels a verification."));
  walk(flag<&Functions::m_markAsSpare>(L"markAsSpare", L"Marks disks as spares."));
}

template <class Walk>
constexpr void Controller::fields(Walk& walk) {
  using namespace field;
  walk(text<&Controller::m_id>(L"id", L"Names the controller; stays the same across restarts."));
  walk(kept<&Controller::m_handle>(L"handle"));
  walk(link<&Controller::m_raidId>(L"raidId", L"raid", L"Its RAID engine; empty without one."));
  walk(kept<&Controller::m_raidHandle>(L"raidHandle"));
  walk(kept<&Controller::m_address>(L"address"));
  walk(text<&Controller::m_name>(L"name", L"What its maker calls it."));
  walk(word<&Controller::m_type>(L"type", L"What disks it is made for."));
  walk(word<&Controller::m_mode>(L"mode", L"How it works."));
  walk(text<&Controller::m_version>(L"version", L"The version of its driver."));
  walk(number<&Controller::m_availableDisks>(L"availableDisks",
                                             L"How many disks are attached and can be used."));
  walk(number<&Controller::m_availableDevices>(L"availableDevices", L"How many devices are attached."));
  walk(flag<&Controller::m_disableESataSpanning>(
      L"disableESataSpanning", L"Whether external disks are kept out of arrays with internal ones."));
  walk(spread<PciIds, &Controller::m_pciIds>(L"pciIds"));
  walk(part<&Controller::m_preboot>(L"preboot", L"Its pre-boot manager."));
  walk(part<&Controller::m_xor>(L"xor", L"Its own computing of parity."));
  walk(flag<&Controller::m_nvsramSupported>(L"nvsramSupported",
                                            L"Whether it has memory that outlives a power loss."));
  walk(part<&Controller::m_supportedFunctions>(L"supportedFunctions", L"What it lets clients do."));
  walk(part<&Controller::m_readPatrol>(L"readPatrol", L"Reading idle disks to find errors early."));
  walk(part<&Controller::m_rohi>(L"rohi",
                                 L"Starting a rebuild on a disk that is put in place of a failed one."));
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const Controller& one, const Controller& other);
/// The same, but for how far work is.
bool sameStructure(const Controller& one, const Controller& other);

#endif
