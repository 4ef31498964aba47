#ifndef MIRN_SESSION_SESSION_ACTIONS_H
#define MIRN_SESSION_SESSION_ACTIONS_H

#include <cstdint>
#include <string>
#include <vector>

#include "action_interfaces.h"
#include "prepared_call.h"

/// All actions of a session: each is judged, and made a call of the library. What becomes of the call is for
/// the derived class to say.
class SessionActions : public IMirnBasicActions,
                       public IMirnDisksActions,
                       public IMirnArraysActions,
                       public IMirnVolumesActions,
                       public IMirnControllersActions,
                       public IMirnPortsActions {
 public:
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
  /// Whatever this raises, the action raises.
  virtual void carryOut(const PreparedCall& call) = 0;
};

#endif
