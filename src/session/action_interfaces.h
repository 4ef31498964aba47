#ifndef MIRN_SESSION_ACTION_INTERFACES_H
#define MIRN_SESSION_ACTION_INTERFACES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "array.h"
#include "enddevice.h"
#include "enumerations.h"
#include "handle.h"
#include "port.h"
#include "volume.h"

/// What listeners change through the session. Each operation makes one library call, renews the snapshot
/// whatever the library answered, and then returns, or raises `MirnException` with the status's error id and
/// text. Two actions never overlap: the second waits as long as the session allows and then fails with
/// "Mirn_OPERATION_FAILED" and "Timeout on access to protected resource", without a library call. All
/// operations are safe from any thread.

/// The longest volume name, in UTF-16 code units.
constexpr std::size_t kMaxVolumeNameSize = 16;

/// Whose password unlocks a disk.
enum class UserLevel : std::int32_t { kMaster = 0, kUser = 1 };

/// A wish for a volume's write-hole policy.
struct RwhRequest {
  struct Drive {
    std::wstring id;  ///< Empty: none.
    VEX_HANDLE handle = 0;
  };

  Drive journalingDrive;
  RwhPolicy policy = RwhPolicy::RWH_OFF;
};

class IMirnBasicActions {
 public:
  virtual ~IMirnBasicActions() = default;

  /// Has the library look for the hardware again.
  virtual void rescan() = 0;
};

class IMirnDisksActions {
 public:
  virtual ~IMirnDisksActions() = default;

  virtual void clearMetadata(VEX_HANDLE disk) = 0;
  /// `array` 0: a spare for every array.
  virtual void markAsSpare(VEX_HANDLE disk, VEX_HANDLE array) = 0;
  virtual void unmarkAsSpare(VEX_HANDLE disk) = 0;
  virtual void markAsNormal(VEX_HANDLE disk) = 0;
  virtual void assignStoragePool(VEX_HANDLE disk, std::uint8_t pool) = 0;
  /// `password`: at most 32 bytes of UTF-8, else "INVALID_PARAMETER", "Invalid locked item password".
  virtual void unlock(VEX_HANDLE disk, UserLevel level, const std::wstring& password) = 0;
  virtual void resetSmartEvent(VEX_HANDLE disk) = 0;
  /// "NOT_SUPPORTED", "Action is not supported" for a device without managed hot-plug.
  virtual void removeDisk(const EndDevice& disk) = 0;
};

class IMirnArraysActions {
 public:
  virtual ~IMirnArraysActions() = default;

  virtual void setWriteCacheState(VEX_HANDLE array, EnableState state) = 0;
  virtual void addDisks(VEX_HANDLE array, const std::vector<EndDevice>& disks) = 0;
};

class IMirnVolumesActions {
 public:
  virtual ~IMirnVolumesActions() = default;

  virtual void markAsNormal(const Volume& volume) = 0;
  virtual void rebuild(const Volume& volume, const EndDevice& disk) = 0;
  virtual void initialize(const Volume& volume) = 0;
  virtual void verify(const Volume& volume, bool repair) = 0;
  virtual void cancelVerify(const Volume& volume) = 0;
  /// `name`: at most `kMaxVolumeNameSize` code units, asserted.
  virtual void rename(const Volume& volume, const std::wstring& name) = 0;
  /// Sizes go to the library as the client gave them.
  virtual void expand(const Volume& volume, std::uint64_t newSize) = 0;
  virtual void setCachePolicy(const Volume& volume, CachePolicy policy) = 0;
  virtual void modifyRaidLevel(const Volume& volume, StripSize stripSize, RaidLevel raidLevel,
                               std::uint64_t newSize, const std::vector<EndDevice>& disks) = 0;
  virtual void deleteVolume(const Volume& volume) = 0;
  virtual void createVolume(const Array& array, const std::wstring& name, StripSize stripSize,
                            RaidLevel raidLevel, std::uint64_t size, const RwhRequest& rwh) = 0;
  /// `sourceDiskId`: the disk of `disks` whose data the volume takes over; empty: none.
  virtual void createVolumeFromDisks(const std::vector<EndDevice>& disks, const std::wstring& name,
                                     StripSize stripSize, RaidLevel raidLevel, std::uint64_t size,
                                     const std::wstring& sourceDiskId, const RwhRequest& rwh) = 0;
  virtual void setRwhPolicy(const Volume& volume, const RwhRequest& rwh) = 0;
};

class IMirnControllersActions {
 public:
  virtual ~IMirnControllersActions() = default;

  virtual void setReadPatrolState(VEX_HANDLE controller, EnableState state) = 0;
  virtual void setRohiState(VEX_HANDLE controller, EnableState state) = 0;
};

class IMirnPortsActions {
 public:
  virtual ~IMirnPortsActions() = default;

  virtual void locate(const Port& port, EnableState state) = 0;
};

#endif
