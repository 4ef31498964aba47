#ifndef MIRN_TESTS_SUPPORT_FAKE_SESSION_H
#define MIRN_TESTS_SUPPORT_FAKE_SESSION_H

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "action_interfaces.h"
#include "read_interface.h"
#include "support/model_makers.h"

/// A session for tests of the listeners: serves the lists that the test sets, and writes down each action
/// with its arguments, such as "rebuild(volume 11, disk 4)".
class FakeSession : public IMirnSession,
                    public IMirnBasicActions,
                    public IMirnDisksActions,
                    public IMirnArraysActions,
                    public IMirnVolumesActions,
                    public IMirnControllersActions,
                    public IMirnPortsActions {
 public:
  using LevelsById = std::map<std::wstring, std::vector<RaidLevelSupport>>;
  using IdsById = std::map<std::wstring, std::vector<std::wstring>>;

  // What reads serve. A list of ids belongs to a controller; one without a list is unknown to the session.
  std::vector<VolumeMaker> volumes;
  std::vector<VolumeMaker> volumesInProgress;
  std::vector<DiskMaker> endDevices;
  std::vector<ArrayMaker> arrays;
  std::vector<ControllerMaker> controllers;
  std::vector<PortMaker> ports;
  std::vector<RaidMaker> raids;
  LevelsById raidLevels;
  IdsById controllerVolumes;
  IdsById controllerArrays;
  IdsById controllerPorts;
  std::wstring serviceState = L"NORMAL";
  std::int64_t locateTimeout = 120;

  // What happens.
  bool storeRefuses = false;                   ///< `setLocateTimeout` gives false.
  std::string failingRead;                     ///< The read of this name raises `MirnException`.
  std::function<void()> duringAction = [] {};  ///< May change the lists above, or raise.

  // What happened.
  std::vector<std::string> actions;
  std::map<std::string, int> reads;  ///< By name, how often.

  /// One of the lists' objects, to change it.
  VolumeMaker& volume(const std::wstring& id);
  DiskMaker& disk(const std::wstring& id);
  ArrayMaker& array(const std::wstring& id);
  ControllerMaker& controller(const std::wstring& id);

  /// From now on, or during the action when called there, no read succeeds.
  void loseEverything();

  bool setLocateTimeout(std::int64_t seconds) override;
  std::int64_t getLocateTimeout() override;
  std::vector<Raid> getRaids() override;
  std::vector<RaidLevelSupport> getRaidLevels(const std::wstring& raidId) override;
  RaidLevelSupport getRaidLevel(const std::wstring& raidId, RaidLevel level) override;
  std::vector<Controller> getControllers() override;
  std::vector<Array> getControllerArrays(const std::wstring& controllerId) override;
  std::vector<Port> getControllerPorts(const std::wstring& controllerId) override;
  std::vector<Volume> getControllerVolumes(const std::wstring& controllerId) override;
  std::vector<Array> getArrays() override;
  std::vector<EndDevice> getEndDevices() override;
  std::vector<Port> getPorts() override;
  std::vector<Volume> getVolumes() override;
  Version getVersion() override;
  std::wstring getServiceState() override;
  std::vector<Volume> getVolumesInProgress() override;
  // Read the whole lists, as `reads` tells.
  boost::optional<Raid> findRaid(const std::wstring& id) override;
  boost::optional<Controller> findController(const std::wstring& id) override;
  boost::optional<Array> findArray(const std::wstring& id) override;
  boost::optional<EndDevice> findEndDevice(const std::wstring& id) override;
  std::vector<boost::optional<EndDevice>> findEndDevices(const std::vector<std::wstring>& ids) override;
  boost::optional<Port> findPort(const std::wstring& id) override;
  boost::optional<Volume> findVolume(const std::wstring& id) override;
  boost::optional<Volume> findVolumeByName(const std::wstring& name) override;
  boost::optional<Controller> findControllerOfVolume(const std::wstring& volumeId) override;
  std::vector<EndDevice> getArrayEndDevices(const std::wstring& arrayId) override;
  std::vector<Volume> getArrayVolumes(const std::wstring& arrayId) override;

  void rescan() override;

  void clearMetadata(VEX_HANDLE disk) override;
  void markAsSpare(VEX_HANDLE disk, VEX_HANDLE array) override;
  void unmarkAsSpare(VEX_HANDLE disk) override;
  void markAsNormal(VEX_HANDLE disk) override;
  void assignStoragePool(VEX_HANDLE disk, std::uint8_t pool) override;
  void unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password) override;
  void resetSmartEvent(VEX_HANDLE disk) override;
  void removeDisk(const EndDevice& disk) override;

  void setWriteCacheState(VEX_HANDLE array, EnableState state) override;
  void addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks) override;

  void markAsNormal(const Volume& volume) override;
  void rebuild(const Volume& volume, const EndDevice& disk) override;
  void initialize(const Volume& volume) override;
  void verify(const Volume& volume, bool repair) override;
  void cancelVerify(const Volume& volume) override;
  void rename(const Volume& volume, const std::wstring& name) override;
  void expand(const Volume& volume, std::uint64_t newSize) override;
  void setCachePolicy(const Volume& volume, CachePolicy policy) override;
  void modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel, std::uint64_t newSize,
                       const std::vector<EndDevice>& disks) override;
  void deleteVolume(const Volume& volume) override;
  void createVolume(const Array& array, const std::wstring& name, StripSize stripSize, RaidLevel raidLevel,
                    std::uint64_t size, const RwhRequest& rwh) override;
  void createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& name,
                             StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                             const std::wstring& sourceDiskId, const RwhRequest& rwh) override;
  void setRwhPolicy(const Volume& volume, const RwhRequest& rwh) override;

  void setReadPatrolState(VEX_HANDLE controller, EnableState state) override;
  void setRohiState(VEX_HANDLE controller, EnableState state) override;

  void locate(const Port& port, EnableState state) override;

 private:
  void read(const std::string& name);
  template <class... Arguments>
  void act(const std::string& name, const Arguments&... arguments);
};

/// What the failing read of a `FakeSession` raises; see `MirnException`.
constexpr char kReadFailure[] = "Timeout on access to protected resource";

#endif
