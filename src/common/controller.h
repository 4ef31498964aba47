#ifndef MIRN_COMMON_CONTROLLER_H
#define MIRN_COMMON_CONTROLLER_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "enumerations.h"
#include "handle.h"
#include "ServiceObject.h"

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
  };

  /// The pre-boot manager.
  struct Preboot {
    std::wstring managerVersion;
    bool loaded = false;
    bool twoTbVolumeSupport = false;
    bool twoTbDiskSupport = false;
  };

  /// A function that a controller may have, and may have on.
  struct Switch {
    bool supported = false;
    bool enabled = false;
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

  void setRaidId(std::wstring id) { m_raidId = std::move(id); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  Controller() = default;

  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  std::wstring m_raidId;  // filled by the session
  VEX_HANDLE m_raidHandle = 0;
  std::wstring m_address;
  std::wstring m_name;
  ControllerType m_type = ControllerType::UNKNOWN;
  ControllerMode m_mode = ControllerMode::UNKNOWN;
  std::wstring m_version;
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

#endif
