#ifndef MIRN_COMMON_ENDDEVICE_H
#define MIRN_COMMON_ENDDEVICE_H

#include <cstdint>
#include <string>
#include <utility>

#include "builder.h"
#include "enumerations.h"
#include "field.h"
#include "handle.h"
#include "ServiceObject.h"
#include "shared_text.h"

/// Anything attached to a controller, a disk above all. Immutable once built, but for the links and the
/// hot-plug flag that the session fills in.
class EndDevice {
 public:
  class Builder;

  /// What a disk has beyond any other device. Sizes are bytes.
  struct Disk {
    std::uint64_t totalSize = 0;
    std::uint64_t logicalSectorSize = 0;
    std::uint64_t physicalSectorSize = 0;
    std::uint64_t freeSize = 0;
    DiskType type = DiskType::UNKNOWN;
    DiskState state = DiskState::UNKNOWN;
    DiskUsage usage = DiskUsage::UNKNOWN;
    WriteCacheState writeCachePolicy = WriteCacheState::UNKNOWN;
    X8Disk x8Disk = X8Disk::UNKNOWN;
    bool systemDisk = false;

    /// What every device tells of it.
    struct Condition;
    /// What it holds.
    struct Capacity;
  };

  const std::wstring& id() const { return m_id; }
  const SharedText& sharedId() const { return m_id; }
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

  void setControllerId(SharedText id) { m_controllerId = std::move(id); }
  void setRaidId(SharedText id) { m_raidId = std::move(id); }
  void setArrayId(SharedText id) { m_arrayId = std::move(id); }
  void setManagedHotplug(bool value) { m_managedHotplug = value; }

  /// The form that clients see: an object, with keys that depend on the type of device and disk.
  ovra::data_transfer::ServiceObject toServiceObject() const;
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// The maker's id as it is kept and shown: without white space at both ends, and with "0x" in front unless
  /// there is a "0x" anywhere.
  static std::wstring vendorIdOf(const std::wstring& text);

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  EndDevice() = default;

  // There are tens of thousands of them: what is widest comes first.
  SharedText m_id;
  SharedText m_controllerId;  // filled by the session
  SharedText m_raidId;        // filled by the session
  SharedText m_arrayId;       // filled by the session
  SharedText m_address;
  SharedText m_vendorId;
  SharedText m_serialNumber;
  SharedText m_model;
  SharedText m_firmware;
  Disk m_disk;
  std::uint64_t m_unpublishedSize = 0;
  VEX_HANDLE m_handle = 0;
  VEX_HANDLE m_controllerHandle = 0;
  VEX_HANDLE m_raidHandle = 0;
  VEX_HANDLE m_arrayHandle = 0;
  VEX_HANDLE m_phyHandle = 0;
  std::uint32_t m_unpublishedNumber = 0;
  std::uint32_t m_lyxDomain = 0;
  DeviceType m_deviceType = DeviceType::UNKNOWN;
  LinkSpeed m_negotiatedLinkSpeed = LinkSpeed::UNKNOWN;
  bool m_isOrdanNVMe = false;
  bool m_managedHotplug = false;
};

/// The lists of a disk's fields.
struct EndDevice::Disk::Condition {
  template <class Walk>
  static constexpr void fields(Walk& walk) {
    walk(field::word<&Disk::type>(L"type", L"How the disk is attached."));
    walk(field::word<&Disk::state>(L"state", L"How the disk is."));
    walk(field::word<&Disk::usage>(L"usage", L"What the disk is there for."));
  }
};

struct EndDevice::Disk::Capacity {
  struct SectorSize {
    template <class Walk>
    static constexpr void fields(Walk& walk) {
      walk(field::size<&Disk::logicalSectorSize>(L"logical", L"The sector that commands count in."));
      walk(field::size<&Disk::physicalSectorSize>(L"physical", L"The sector that the media are written in."));
    }
  };

  template <class Walk>
  static constexpr void fields(Walk& walk) {
    constexpr auto kHasTwoPorts = [](const Disk& disk) {
      return disk.x8Disk == X8Disk::X8_A || disk.x8Disk == X8Disk::X8_B;
    };
    walk(field::size<&Disk::totalSize>(L"totalSize", L"What the disk holds."));
    walk(field::group<SectorSize>(L"sectorSize", L"The disk's sectors."));
    walk(field::size<&Disk::freeSize>(L"freeSize", L"What no volume has taken yet."));
    walk(field::word<&Disk::writeCachePolicy>(L"writeCachePolicy", L"Whether it keeps writes in its cache."));
    walk(field::flag<&Disk::systemDisk>(L"systemDisk", L"Whether the running system lies on it."));
    walk(field::word<&Disk::x8Disk>(L"x8Disk", L"Which half of a drive with two ports it is.")
             .onlyIf(kHasTwoPorts, L"the disk is half of a drive with two ports"));
  }
};

template <class Walk>
constexpr void EndDevice::fields(Walk& walk) {
  using namespace field;
  constexpr auto kMayBeDisk = [](const EndDevice& device) {
    return device.m_deviceType != DeviceType::NON_DISK_STORAGE;
  };
  constexpr auto kIsLyx = [](const EndDevice& device) { return device.m_disk.type == DiskType::Lyx; };
  constexpr wchar_t kOfLyx[] = L"type is Lyx";
  walk(text<&EndDevice::m_id>(L"id", L"Names the device; stays the same across restarts."));
  walk(kept<&EndDevice::m_handle>(L"handle"));
  walk(link<&EndDevice::m_controllerId>(L"controllerId", L"controller",
                                        L"The controller that it is attached to."));
  walk(kept<&EndDevice::m_controllerHandle>(L"controllerHandle"));
  walk(link<&EndDevice::m_raidId>(L"raidId", L"raid",
                                  L"The RAID engine of its controller; empty without one."));
  walk(kept<&EndDevice::m_raidHandle>(L"raidHandle"));
  walk(linkOrNull<&EndDevice::m_arrayId>(L"arrayId", L"array",
                                         L"The array that it is part of; null outside of arrays."));
  walk(kept<&EndDevice::m_arrayHandle>(L"arrayHandle"));
  walk(kept<&EndDevice::m_phyHandle>(L"phyHandle"));
  walk(text<&EndDevice::m_address>(L"address", L"Its place: numbers of bus, device, function and port."));
  walk(word<&EndDevice::m_deviceType>(L"deviceType", L"What sort of device it is."));
  walk(kept<&EndDevice::m_unpublishedNumber>(L"unpublishedNumber"));
  walk(text<&EndDevice::m_vendorId>(L"vendorId", L"The maker's number, hexadecimal.").onlyIf(kIsLyx, kOfLyx));
  walk(text<&EndDevice::m_serialNumber>(L"serialNumber", L"The serial number that its maker gave it."));
  walk(text<&EndDevice::m_model>(L"model", L"The name of its model."));
  walk(text<&EndDevice::m_firmware>(L"firmware", L"The version of its firmware."));
  walk(spread<Disk::Condition, &EndDevice::m_disk>(L"disk"));
  walk(spread<Disk::Capacity, &EndDevice::m_disk>(L"disk")
           .onlyIf(kMayBeDisk, L"deviceType is not NON_DISK_STORAGE")
           .withoutFlag());
  walk(kept<&EndDevice::m_unpublishedSize>(L"unpublishedSize"));
  walk(word<&EndDevice::m_negotiatedLinkSpeed>(L"negotiatedLinkSpeed", L"How fast the link to it runs."));
  walk(number<&EndDevice::m_lyxDomain>(L"lyxDomain", L"The domain that the disk belongs to.")
           .onlyIf(kIsLyx, kOfLyx));
  walk(flag<&EndDevice::m_isOrdanNVMe>(L"isOrdanNVMe", L"Whether it is one of the engine's own NVMe drives.")
           .onlyIf(kIsLyx, kOfLyx));
  walk(flag<&EndDevice::m_managedHotplug>(L"managedHotplug",
                                          L"Whether it may be taken out while the system runs."));
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const EndDevice& one, const EndDevice& other);
/// The same, but for how far work is.
bool sameStructure(const EndDevice& one, const EndDevice& other);

/// A forgotten field is stopped by an assertion.
class EndDevice::Builder : public ModelBuilder<EndDevice::Builder, EndDevice> {
 public:
  Builder() : ModelBuilder(EndDevice()) {}

  Builder& id(SharedText value) { return set<&EndDevice::m_id>(std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<&EndDevice::m_handle>(value); }
  Builder& controllerHandle(VEX_HANDLE value) { return set<&EndDevice::m_controllerHandle>(value); }
  Builder& raidHandle(VEX_HANDLE value) { return set<&EndDevice::m_raidHandle>(value); }
  Builder& arrayHandle(VEX_HANDLE value) { return set<&EndDevice::m_arrayHandle>(value); }
  Builder& phyHandle(VEX_HANDLE value) { return set<&EndDevice::m_phyHandle>(value); }
  Builder& address(SharedText value) { return set<&EndDevice::m_address>(std::move(value)); }
  Builder& deviceType(DeviceType value) { return set<&EndDevice::m_deviceType>(value); }
  Builder& unpublishedNumber(std::uint32_t value) { return set<&EndDevice::m_unpublishedNumber>(value); }
  /// Takes `vendorIdOf` the text.
  Builder& vendorId(const SharedText& value);
  Builder& serialNumber(SharedText value) { return set<&EndDevice::m_serialNumber>(std::move(value)); }
  Builder& model(SharedText value) { return set<&EndDevice::m_model>(std::move(value)); }
  Builder& firmware(SharedText value) { return set<&EndDevice::m_firmware>(std::move(value)); }
  Builder& disk(Disk value) { return set<&EndDevice::m_disk>(value); }
  Builder& unpublishedSize(std::uint64_t value) { return set<&EndDevice::m_unpublishedSize>(value); }
  Builder& negotiatedLinkSpeed(LinkSpeed value) { return set<&EndDevice::m_negotiatedLinkSpeed>(value); }
  Builder& lyxDomain(std::uint32_t value) { return set<&EndDevice::m_lyxDomain>(value); }
  Builder& isOrdanNVMe(bool value) { return set<&EndDevice::m_isOrdanNVMe>(value); }
  Builder& managedHotplug(bool value) { return set<&EndDevice::m_managedHotplug>(value); }

  EndDevice build() const&;
  EndDevice build() &&;  ///< Hands out the object itself.
};

#endif
