#include <gtest/gtest.h>

#include <type_traits>

#include "mirn_session.h"
#include "support/log_lines.h"
#include "support/machine_settings.h"
#include "support/virtual_slot.h"

namespace {

/// The destructor comes first and takes two places.
template <class... Operations>
void expectSlotsInOrder(Operations... operations) {
  std::size_t slot = 2;
  for (const std::size_t found : {virtualSlot(operations)...}) EXPECT_EQ(found, slot++);
}

TEST(SessionInterfaces, KeepTheirSlots) {
  using Reads = IMirnSession;
  expectSlotsInOrder(&Reads::setLocateTimeout, &Reads::getLocateTimeout, &Reads::getRaids,
                     &Reads::getRaidLevels, &Reads::getRaidLevel, &Reads::getControllers,
                     &Reads::getControllerArrays, &Reads::getControllerPorts, &Reads::getControllerVolumes,
                     &Reads::getArrays, &Reads::getEndDevices, &Reads::getPorts, &Reads::getVolumes,
                     &Reads::getVersion, &Reads::getServiceState, &Reads::getVolumesInProgress,
                     &Reads::findRaid, &Reads::findController, &Reads::findArray, &Reads::findEndDevice,
                     &Reads::findEndDevices, &Reads::findPort, &Reads::findVolume, &Reads::findVolumeByName,
                     &Reads::findControllerOfVolume, &Reads::getArrayEndDevices, &Reads::getArrayVolumes);
  expectSlotsInOrder(&IMirnBasicActions::rescan);
  using Disks = IMirnDisksActions;
  expectSlotsInOrder(&Disks::clearMetadata, &Disks::markAsSpare, &Disks::unmarkAsSpare, &Disks::markAsNormal,
                     &Disks::assignStoragePool, &Disks::unlock, &Disks::resetSmartEvent, &Disks::removeDisk);
  expectSlotsInOrder(&IMirnArraysActions::setWriteCacheState, &IMirnArraysActions::addDisks);
  using Volumes = IMirnVolumesActions;
  expectSlotsInOrder(&Volumes::markAsNormal, &Volumes::rebuild, &Volumes::initialize, &Volumes::verify,
                     &Volumes::cancelVerify, &Volumes::rename, &Volumes::expand, &Volumes::setCachePolicy,
                     &Volumes::modifyRaidLevel, &Volumes::deleteVolume, &Volumes::createVolume,
                     &Volumes::createVolumeFromDisks, &Volumes::setRwhPolicy);
  expectSlotsInOrder(&IMirnControllersActions::setReadPatrolState, &IMirnControllersActions::setRohiState);
  expectSlotsInOrder(&IMirnPortsActions::locate);
}

/// Where a part of the session lies in it.
template <class Interface>
std::ptrdiff_t placeOf(MirnSession& session) {
  return reinterpret_cast<char*>(static_cast<Interface*>(&session)) - reinterpret_cast<char*>(&session);
}

TEST(SessionInterfaces, StandInTheirOrderInTheSession) {
  const MachineSettings settings;
  const LogLines log;
  MirnSession session;
  EXPECT_EQ(placeOf<IMirnSession>(session), 0);
  EXPECT_LT(placeOf<IMirnSession>(session), placeOf<IMirnBasicActions>(session));
  EXPECT_LT(placeOf<IMirnBasicActions>(session), placeOf<IMirnDisksActions>(session));
  EXPECT_LT(placeOf<IMirnDisksActions>(session), placeOf<IMirnArraysActions>(session));
  EXPECT_LT(placeOf<IMirnArraysActions>(session), placeOf<IMirnVolumesActions>(session));
  EXPECT_LT(placeOf<IMirnVolumesActions>(session), placeOf<IMirnControllersActions>(session));
  EXPECT_LT(placeOf<IMirnControllersActions>(session), placeOf<IMirnPortsActions>(session));
}

TEST(SessionInterfaces, SessionIsNeitherCopiedNorMoved) {
  EXPECT_FALSE(std::is_copy_constructible_v<MirnSession>);
  EXPECT_FALSE(std::is_move_constructible_v<MirnSession>);
  EXPECT_FALSE(std::is_copy_assignable_v<MirnSession>);
  EXPECT_FALSE(std::is_move_assignable_v<MirnSession>);
}

TEST(SessionInterfaces, NumbersAreSettled) {
  EXPECT_EQ(kMaxVolumeNameSize, 16u);
  EXPECT_EQ(static_cast<std::int32_t>(UserLevel::kMaster), 0);
  EXPECT_EQ(static_cast<std::int32_t>(UserLevel::kUser), 1);
  EXPECT_EQ(kLocateTimeoutDefault, 12);
  EXPECT_EQ(kLocateTimeoutMin, 1);
  EXPECT_EQ(kLocateTimeoutMax, 3600);
}

}  // namespace
