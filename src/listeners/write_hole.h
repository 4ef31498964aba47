#ifndef MIRN_LISTENERS_WRITE_HOLE_H
#define MIRN_LISTENERS_WRITE_HOLE_H

#include <cstdint>

#include "action_interfaces.h"
#include "read_interface.h"
#include "ServiceObject.h"

/// The write-hole policy that `body` asks for; off when it asks for none. `level` is the volume's, or
/// `RAID_INVALID` when it stands in the body.
RwhRequest parseRwhRequest(const ovra::data_transfer::ServiceObject& body, IMirnSession& session,
                           RaidLevel level);

/// The drive that "journalingDriveId" of `body` names: a disk.
EndDevice requestedJournalingDrive(const ovra::data_transfer::ServiceObject& body, IMirnSession& session);

/// A journaling drive needs the sector size of the volume's disks, in bytes.
void requireJournalingSectorSize(const EndDevice& drive, std::uint64_t sectorSize);

#endif
