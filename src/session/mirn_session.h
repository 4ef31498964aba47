#ifndef MIRN_SESSION_MIRN_SESSION_H
#define MIRN_SESSION_MIRN_SESSION_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "action_interfaces.h"
#include "change_watch.h"
#include "mirn_snapshot.h"
#include "picture_times.h"
#include "plugin_setting.h"
#include "read_interface.h"
#include "session_locks.h"
#include "VEXL2.h"

/// The back end: holds the snapshot, serves every read from it, carries out the actions, and runs the event
/// thread. Neither copied nor moved: listeners hold pointers to its interfaces.
class MirnSession : public IMirnSession,
                    public IMirnBasicActions,
                    public IMirnDisksActions,
                    public IMirnArraysActions,
                    public IMirnVolumesActions,
                    public IMirnControllersActions,
                    public IMirnPortsActions {
 public:
  /// Reads the settings from their store; never fails for want of them. Makes no library call.
  MirnSession();
  /// Stops the event thread if it still runs.
  ~MirnSession() override;

  MirnSession(const MirnSession&) = delete;
  MirnSession& operator=(const MirnSession&) = delete;

  /// Begins with an empty picture, takes the first snapshot and launches the event thread; does nothing if it
  /// runs. A failed snapshot is logged and leaves the picture empty. What else goes wrong is raised, and
  /// start can be tried again: `MirnException` when the lock is not had in time, with the picture as it was;
  /// `std::system_error` when no thread can be launched; `VexException` as from `takeSnapshot`. The library
  /// must be initialised. Not for two threads at once, nor beside `stop`.
  void start();
  /// Sends away whoever waits for a change, ends the event thread and waits for it: one library wait, up to
  /// five seconds. Does nothing if it doesn't run.
  void stop();

  /// Replaces the picture by a new one and records the differences as events. A `MirnException` on the way is
  /// logged, and the old picture stays. `alreadyLocked`: the caller holds exclusive ownership.
  void refresh(bool alreadyLocked);
  /// Reads a whole picture from the library. Raises `MirnException`, or `VexException` when the library
  /// refuses to close its session.
  MirnSnapshot takeSnapshot();

  /// Renews the snapshot, then raises `MirnException` with the status's text and error id unless it is 0. For
  /// callers with exclusive ownership.
  void checkStatus(VEX_STATUS status);
  /// The same, with `errorId` in place of the status's own when the status is `specialStatus`.
  void checkStatusMapped(VEX_STATUS status, VEX_STATUS specialStatus, const char* errorId);

  /// Where the picture stands. Open while the event thread runs.
  ChangeWatch& changes() { return m_changes; }

  // IMirnSession
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

  // IMirnBasicActions
  void rescan() override;

  // IMirnDisksActions
  void clearMetadata(VEX_HANDLE disk) override;
  void markAsSpare(VEX_HANDLE disk, VEX_HANDLE array) override;
  void unmarkAsSpare(VEX_HANDLE disk) override;
  void markAsNormal(VEX_HANDLE disk) override;
  void assignStoragePool(VEX_HANDLE disk, std::uint8_t pool) override;
  void unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password) override;
  void resetSmartEvent(VEX_HANDLE disk) override;
  void removeDisk(const EndDevice& disk) override;

  // IMirnArraysActions
  void setWriteCacheState(VEX_HANDLE array, EnableState state) override;
  void addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks) override;

  // IMirnVolumesActions
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

  // IMirnControllersActions
  void setReadPatrolState(VEX_HANDLE controller, EnableState state) override;
  void setRohiState(VEX_HANDLE controller, EnableState state) override;

  // IMirnPortsActions
  void locate(const Port& port, EnableState state) override;

 protected:
  /// The body of the event thread.
  void eventLoop();
  /// The event thread, running.
  virtual std::thread launchEventThread();
  /// What `start` sets `m_lockTimeout` to.
  virtual std::int64_t lockTimeout() const;
  /// Records how the picture in use differs from the one before. Ahead of it, clients have the picture.
  virtual void recordEvents(const MirnSnapshot& before, const std::vector<Volume>& volumes,
                            const std::vector<EndDevice>& endDevices);

 private:
  using LibraryCall = std::function<VEX_STATUS()>;
  using StatusCheck = std::function<void(VEX_STATUS)>;

  template <class Member>
  Member copyOf(Member MirnSnapshot::*member);
  template <class Object>
  std::vector<Object> objectsOfController(const std::wstring& controllerId,
                                          std::vector<Object> MirnSnapshot::*objects,
                                          MirnSnapshot::IdLists MirnSnapshot::*idLists);

  void readSettings();
  void loadFirstSnapshot();
  void refreshUnlocked();
  void refreshLocked();
  MirnSnapshot takeSnapshotOrNote();
  /// The picture in use is another one now, which differs so far. For callers with exclusive ownership.
  void notePicture(SnapshotDifference difference);
  void noteNoPicture();
  void noteFailure(const char* words);

  /// The shape of every action: upgrade ownership, the one library call, exclusive ownership, the check.
  void act(const LibraryCall& call, const StatusCheck& check);
  void act(const LibraryCall& call);
  /// With another error id for one status.
  void actMapped(const LibraryCall& call, VEX_STATUS specialStatus, const char* errorId);
  /// With the id of a disk or volume in the wrong state for the status that says so.
  void actOnDisk(const LibraryCall& call);
  void actOnVolume(const LibraryCall& call);

  // Guarded by m_mutex.
  MirnSnapshot m_snapshot;

  ChangeWatch m_changes;

  std::mutex m_timesMutex;
  PictureTimes m_times;  // guarded by m_timesMutex; a new picture's under exclusive ownership, too

  // Written by the thread that starts and stops, read by the event thread. Not set by a start that failed.
  std::atomic<bool> m_running{false};
  std::thread m_eventThread;

  SessionMutex m_mutex;

 protected:
  std::atomic<std::int64_t> m_lockTimeout{0};  ///< Seconds; set by each start while others may read.

 private:
  std::int64_t m_locateTimeout = kLocateTimeoutDefault;  ///< Seconds; constant after construction.
};

#endif
