#ifndef MIRN_COMMON_ENDDEVICE_H
#define MIRN_COMMON_ENDDEVICE_H

#include <cstdint>
#include <string>
#include <utility>

#include "builder.h"
#include "enumerations.h"
#include "handle.h"
#include "ServiceObject.h"

/// Anything attached to a controller, a disk above all. Immutable once built, but for the links and the
/// hot-plug flag that the session fills in.
class EndDevice {
 public:
  class Builder;

  /// What a disk has beyond any other device. Sizes are bytes.
  struct Disk {
    DiskType type = DiskType::UNKNOWN;
    DiskState state = DiskState::UNKNOWN;
    DiskUsage usage = DiskUsage::UNKNOWN;
    std::uint64_t totalSize = 0;
    std::uint64_t logicalSectorSize = 0;
    std::uint64_t physicalSectorSize = 0;
    std::uint64_t freeSize = 0;
    WriteCacheState writeCachePolicy = WriteCacheState::UNKNOWN;
    bool systemDisk = false;
    X8Disk x8Disk = X8Disk::UNKNOWN;
  };

  const std::wstring& id() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  const std::wstring& controllerId() const { return m_controllerId; }
  VEX_HANDLE controllerHandle() const { return m_controllerHandle; }
  const std::wstring& raidId() const { return m_raidId; }
  VEX_HANDLE raidHandle() const { return m_raidHandle; }
  const std::wstring& arrayId() const { return m_arrayId; }  ///< Empty for a device in no array.
  VEX_HANDLE arrayHandle() const { return m_arrayHandle; }
  VEX_HANDLE phyHandle() const { return m_phyHandle; }  ///< What removing the device names.
  const std::wstring& address() const { return m_address; }
  DeviceType deviceType() const { return m_deviceType; }
  std::uint32_t unpublishedNumber() const { return m_unpublishedNumber; }
  const std::wstring& vendorId() const { return m_vendorId; }
  const std::wstring& serialNumber() const { return m_serialNumber; }
  const std::wstring& model() const { return m_model; }
  const std::wstring& firmware() const { return m_firmware; }
  const Disk& disk() const { return m_disk; }
  std::uint64_t unpublishedSize() const { return m_unpublishedSize; }
  LinkSpeed negotiatedLinkSpeed() const { return m_negotiatedLinkSpeed; }
  std::uint32_t lyxDomain() const { return m_lyxDomain; }
  bool isOrdanNVMe() const { return m_isOrdanNVMe; }
  bool managedHotplug() const { return m_managedHotplug; }

  void setControllerId(std::wstring id) { m_controllerId = std::move(id); }
  void setRaidId(std::wstring id) { m_raidId = std::move(id); }
  void setArrayId(std::wstring id) { m_arrayId = std::move(id); }
  void setManagedHotplug(bool value) { m_managedHotplug = value; }

  /// The form that clients see: an object, with keys that depend on the type of device and disk.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  EndDevice() = default;

  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  std::wstring m_controllerId;  // filled by the session
  VEX_HANDLE m_controllerHandle = 0;
  std::wstring m_raidId;  // filled by the session
  VEX_HANDLE m_raidHandle = 0;
  std::wstring m_arrayId;  // filled by the session
  VEX_HANDLE m_arrayHandle = 0;
  VEX_HANDLE m_phyHandle = 0;
  std::wstring m_address;
  DeviceType m_deviceType = DeviceType::UNKNOWN;
  std::uint32_t m_unpublishedNumber = 0;
  std::wstring m_vendorId;
  std::wstring m_serialNumber;
  std::wstring m_model;
  std::wstring m_firmware;
  Disk m_disk;
  std::uint64_t m_unpublishedSize = 0;
  LinkSpeed m_negotiatedLinkSpeed = LinkSpeed::UNKNOWN;
  std::uint32_t m_lyxDomain = 0;
  bool m_isOrdanNVMe = false;
  bool m_managedHotplug = false;
};

/// A forgotten field is stopped by an assertion.
class EndDevice::Builder : public ModelBuilder<EndDevice::Builder, EndDevice, 19> {
 public:
  Builder() : ModelBuilder(EndDevice()) {}

  Builder& id(std::wstring value) { return set<0>(m_object.m_id, std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<1>(m_object.m_handle, value); }
  Builder& controllerHandle(VEX_HANDLE value) { return set<2>(m_object.m_controllerHandle, value); }
  Builder& raidHandle(VEX_HANDLE value) { return set<3>(m_object.m_raidHandle, value); }
  Builder& arrayHandle(VEX_HANDLE value) { return set<4>(m_object.m_arrayHandle, value); }
  Builder& phyHandle(VEX_HANDLE value) { return set<5>(m_object.m_phyHandle, value); }
  Builder& address(std::wstring value) { return set<6>(m_object.m_address, std::move(value)); }
  Builder& deviceType(DeviceType value) { return set<7>(m_object.m_deviceType, value); }
  Builder& unpublishedNumber(std::uint32_t value) { return set<8>(m_object.m_unpublishedNumber, value); }
  /// Trims white space at both ends and puts "0x" in front, unless the text has a "0x" anywhere.
  Builder& vendorId(std::wstring value);
  Builder& serialNumber(std::wstring value) { return set<10>(m_object.m_serialNumber, std::move(value)); }
  Builder& model(std::wstring value) { return set<11>(m_object.m_model, std::move(value)); }
  Builder& firmware(std::wstring value) { return set<12>(m_object.m_firmware, std::move(value)); }
  Builder& disk(Disk value) { return set<13>(m_object.m_disk, value); }
  Builder& unpublishedSize(std::uint64_t value) { return set<14>(m_object.m_unpublishedSize, value); }
  Builder& negotiatedLinkSpeed(LinkSpeed value) { return set<15>(m_object.m_negotiatedLinkSpeed, value); }
  Builder& lyxDomain(std::uint32_t value) { return set<16>(m_object.m_lyxDomain, value); }
  Builder& isOrdanNVMe(bool value) { return set<17>(m_object.m_isOrdanNVMe, value); }
  Builder& managedHotplug(bool value) { return set<18>(m_object.m_managedHotplug, value); }

  EndDevice build() const;
};

#endif
