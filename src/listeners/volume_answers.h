#ifndef MIRN_LISTENERS_VOLUME_ANSWERS_H
#define MIRN_LISTENERS_VOLUME_ANSWERS_H

#include <string>

#include "read_interface.h"
#include "ServiceObject.h"

/// Answers after a change of a volume, from the renewed snapshot. None fails: a volume that cannot be found
/// again gives the null value.

/// {volumeId, state?}: the state only if it changed.
ovra::data_transfer::ServiceObject makeStateResponse(IMirnSession& session, const Volume& before);
/// {volumeId, name}
ovra::data_transfer::ServiceObject makeNameResponse(IMirnSession& session, const std::wstring& name);
/// {volumeId, size?, cachePolicy?, raidLevel?, stripSize?, rwhPolicy?, journalingDriveId?}, each only if it
/// changed, size in mebibytes; and with `withDisks` the ids of the array's disks.
ovra::data_transfer::ServiceObject makeVolumeResponse(IMirnSession& session, const Volume& before,
                                                      bool withDisks);
/// The whole volume.
ovra::data_transfer::ServiceObject makeCreatedResponse(IMirnSession& session, const std::wstring& name);

#endif
