#ifndef MIRN_SESSION_READ_INTERFACE_H
#define MIRN_SESSION_READ_INTERFACE_H

#include <boost/optional.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "array.h"
#include "controller_builder.h"
#include "enddevice.h"
#include "port.h"
#include "raid.h"
#include "raidlevelsupport.h"
#include "version.h"
#include "volume.h"

/// What listeners read of the session. Everything comes from the snapshot, by value, and from any thread.
///
/// Every operation but the first two waits for the snapshot's lock as long as the session allows, and then
/// raises `MirnException` with "Mirn_OPERATION_FAILED" and "Timeout on access to protected resource".
class IMirnSession {
 public:
  virtual ~IMirnSession() = default;

  /// Stores the time that a locate LED flashes, 1 to 3600 seconds. False: out of range, or the store refused.
  /// `getLocateTimeout` goes on giving the value read at construction; the driver sees the new one at once.
  virtual bool setLocateTimeout(std::int64_t seconds) = 0;
  virtual std::int64_t getLocateTimeout() = 0;

  virtual std::vector<Raid> getRaids() = 0;
  /// In ascending order of level. Unknown id: `std::out_of_range`.
  virtual std::vector<RaidLevelSupport> getRaidLevels(const std::wstring& raidId) = 0;
  /// Unknown id or level: `std::out_of_range`.
  virtual RaidLevelSupport getRaidLevel(const std::wstring& raidId, RaidLevel level) = 0;

  virtual std::vector<Controller> getControllers() = 0;
  /// The three reads below keep the order of the full list. An unknown controller is `ListenerException`,
  /// "OBJECT_NOT_FOUND"; a known one without an entry in the snapshot's map is `std::out_of_range`.
  virtual std::vector<Array> getControllerArrays(const std::wstring& controllerId) = 0;
  virtual std::vector<Port> getControllerPorts(const std::wstring& controllerId) = 0;
  virtual std::vector<Volume> getControllerVolumes(const std::wstring& controllerId) = 0;

  virtual std::vector<Array> getArrays() = 0;
  virtual std::vector<EndDevice> getEndDevices() = 0;
  virtual std::vector<Port> getPorts() = 0;
  virtual std::vector<Volume> getVolumes() = 0;

  /// `MirnException` with "Version is not available yet" until a snapshot has succeeded.
  virtual Version getVersion() = 0;
  /// "NORMAL", "WARNING" or "FAILED".
  virtual std::wstring getServiceState() = 0;
  /// The volumes that rebuild, initialise, verify or migrate.
  virtual std::vector<Volume> getVolumesInProgress() = 0;

  // One object: the first of its list with the id or name; none when there is no such.
  virtual boost::optional<Raid> findRaid(const std::wstring& id) = 0;
  virtual boost::optional<Controller> findController(const std::wstring& id) = 0;
  virtual boost::optional<Array> findArray(const std::wstring& id) = 0;
  virtual boost::optional<EndDevice> findEndDevice(const std::wstring& id) = 0;
  /// One for each id, in order, all from one snapshot.
  virtual std::vector<boost::optional<EndDevice>> findEndDevices(const std::vector<std::wstring>& ids) = 0;
  virtual boost::optional<Port> findPort(const std::wstring& id) = 0;
  virtual boost::optional<Volume> findVolume(const std::wstring& id) = 0;
  virtual boost::optional<Volume> findVolumeByName(const std::wstring& name) = 0;

  /// The first controller with this volume among its own. A controller without an entry in the snapshot's map
  /// that comes ahead of it is `std::out_of_range`.
  virtual boost::optional<Controller> findControllerOfVolume(const std::wstring& volumeId) = 0;

  /// Those that name this array, in the order of the full list. Nobody asks whether there is such an array.
  virtual std::vector<EndDevice> getArrayEndDevices(const std::wstring& arrayId) = 0;
  virtual std::vector<Volume> getArrayVolumes(const std::wstring& arrayId) = 0;
};

#endif
