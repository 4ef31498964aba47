#ifndef MIRN_LIBRARY_VEX_INFO_H
#define MIRN_LIBRARY_VEX_INFO_H

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "non_copyable.h"
#include "vex_converter.h"
#include "vex_info_interface.h"
#include "VEXL2.h"

struct DevicePhy;

/// A reader for one snapshot, whose objects have their texts from `texts`.
std::unique_ptr<IVexInfo> makeVexInfo(
    const std::shared_ptr<KnownTexts>& texts = std::make_shared<KnownTexts>());

class VexInfo : public IVexInfo, private NonCopyable {
 public:
  /// The ids of ports come from `texts`, too.
  explicit VexInfo(std::unique_ptr<IVexConverter> converter,
                   std::shared_ptr<KnownTexts> texts = std::make_shared<KnownTexts>());

  /// Closes a session that is open still. A refusal of that is nobody's concern any more.
  ~VexInfo() override;

  Version getVersion() const override;
  std::vector<Controller> getControllers() const override;
  std::vector<EndDevice> getEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                       std::string filter) const override;
  std::vector<Array> getArrays(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, std::string filter) const override;
  std::vector<Volume> getVolumes(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, std::string filter) const override;
  std::vector<Port> getPorts(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const override;
  std::vector<Raid> getRaids() const override;
  RaidLevelSupport getRaidLevel(const Raid& raid, RaidLevel level) const override;
  ControllerIds getControllerArrays(const std::vector<Controller>& controllers) const override;
  ControllerIds getControllerPorts(const std::vector<Controller>& controllers) const override;
  ControllerIds getControllerVolumes(const std::vector<Controller>& controllers) const override;
  RaidLevels getRaidLevels(const std::vector<Raid>& raids) const override;
  void open() override;
  void close() override;

 private:
  struct DeviceCount {
    std::uint64_t disks;
    std::uint64_t all;
  };

  virtual std::vector<Array> arraysOf(const Controller& controller) const;
  virtual std::vector<Volume> volumesOf(const Controller& controller) const;
  virtual std::vector<SharedText> portIdsOf(const Controller& controller) const;

  virtual std::vector<VEX_CONTROLLER_INFO> readControllers() const;
  virtual std::vector<VEX_END_DEVICE_INFO> readEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                                          std::string filter) const;
  virtual std::vector<DevicePhy> readPhys(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const;
  virtual std::vector<VEX_ARRAY_INFO> readArrays(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                                 std::string filter) const;
  virtual std::vector<VEX_VOLUME_INFO> readVolumes(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                                   std::string filter) const;
  virtual std::vector<VEX_RAID_INFO> readRaids() const;
  virtual VEX_RAID_LEVEL_INFO readRaidLevel(VEX_HANDLE raidInfoHandle, std::uint32_t libraryLevel) const;

  // Of which there are most: what is made of them is kept, and not their records too.
  DeviceCount countEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const;
  template <class Convert>
  auto readPorts(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, Convert convert) const;

  Controller controllerOf(const VEX_CONTROLLER_INFO& record) const;
  VEX_RAID_INFO raidOf(const VEX_CONTROLLER_INFO& controller) const;

  VEX_HANDLE m_session = 0;  // 0: none is open
  std::unique_ptr<IVexConverter> m_converter;
  std::shared_ptr<KnownTexts> m_texts;  // never null
};

#endif
