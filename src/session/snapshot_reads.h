#ifndef MIRN_SESSION_SNAPSHOT_READS_H
#define MIRN_SESSION_SNAPSHOT_READS_H

#include <string>
#include <vector>

#include "indexed_snapshot.h"
#include "read_interface.h"

/// All reads of a session but those of its settings: each asks for the picture once and answers from that.
class SnapshotReads : public IMirnSession {
 public:
  /// The picture that a read answers from; never null. What this raises, the read raises.
  virtual Picture picture() = 0;

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

 private:
  template <class Object>
  std::vector<Object> objectsOfController(const std::wstring& controllerId,
                                          std::vector<Object> MirnSnapshot::*objects,
                                          MirnSnapshot::IdLists MirnSnapshot::*idLists);
};

#endif
