#ifndef MIRN_LIBRARY_VEX_CONVERTER_H
#define MIRN_LIBRARY_VEX_CONVERTER_H

#include <boost/optional.hpp>
#include <cstdint>
#include <memory>
#include <vector>

#include "array.h"
#include "controller.h"
#include "enddevice.h"
#include "known_texts.h"
#include "non_copyable.h"
#include "port.h"
#include "raid.h"
#include "raidlevelsupport.h"
#include "version.h"
#include "VEXL2.h"
#include "volume.h"

/// Turns library records into model objects. Calls no library, and knows of no record that it has turned. For
/// one thread at a time.
///
/// Related objects keep their handles; the ids that belong to them are empty until the session fills them in.
/// Text that is not UTF-8 raises `std::range_error`.
class IVexConverter {
 public:
  virtual ~IVexConverter() = default;

  /// Of `phys`, the first that names the device gives the phy handle and the link speed; both are 0 when none
  /// does, and for a device whose own handle is 0. The list may hold others.
  virtual EndDevice toEndDevice(const VEX_END_DEVICE_INFO& record,
                                const std::vector<VEX_PHY_INFO>& phys) const = 0;
  /// `level` is the library's code of the level that the record tells of.
  virtual RaidLevelSupport toRaidLevelSupport(const VEX_RAID_LEVEL_INFO& record,
                                              std::uint32_t level) const = 0;
  virtual Raid toRaid(const VEX_RAID_INFO& record) const = 0;
  virtual Port toPort(const VEX_PORT_INFO& record) const = 0;
  /// The RAID record is not read: the handle is the link.
  virtual Controller toController(const VEX_CONTROLLER_INFO& record, std::uint64_t availableDisks,
                                  std::uint64_t availableDevices,
                                  const boost::optional<VEX_RAID_INFO>& raid) const = 0;
  virtual Volume toVolume(const VEX_VOLUME_INFO& record) const = 0;
  virtual Array toArray(const VEX_ARRAY_INFO& record) const = 0;
  virtual Version toVersion(const VEX_SYSTEM_INFO& record) const = 0;
};

class VexConverter : public IVexConverter, private NonCopyable {
 public:
  /// Objects have their texts from `texts`, so that all who make objects with these share them.
  explicit VexConverter(std::shared_ptr<KnownTexts> texts = std::make_shared<KnownTexts>());

  EndDevice toEndDevice(const VEX_END_DEVICE_INFO& record,
                        const std::vector<VEX_PHY_INFO>& phys) const override;
  RaidLevelSupport toRaidLevelSupport(const VEX_RAID_LEVEL_INFO& record, std::uint32_t level) const override;
  Raid toRaid(const VEX_RAID_INFO& record) const override;
  Port toPort(const VEX_PORT_INFO& record) const override;
  Controller toController(const VEX_CONTROLLER_INFO& record, std::uint64_t availableDisks,
                          std::uint64_t availableDevices,
                          const boost::optional<VEX_RAID_INFO>& raid) const override;
  Volume toVolume(const VEX_VOLUME_INFO& record) const override;
  Array toArray(const VEX_ARRAY_INFO& record) const override;
  Version toVersion(const VEX_SYSTEM_INFO& record) const override;

  virtual Controller::Functions toFunctions(const VEX_CONTROLLER_INFO& record) const;
  virtual EndDevice::Disk toDisk(const VEX_END_DEVICE_INFO& record) const;

 private:
  std::shared_ptr<KnownTexts> m_texts;  // never null
};

#endif
