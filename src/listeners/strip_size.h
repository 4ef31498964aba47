#ifndef MIRN_LISTENERS_STRIP_SIZE_H
#define MIRN_LISTENERS_STRIP_SIZE_H

#include <vector>

#include "read_interface.h"

/// The strip size for a volume of `level` on `disks` when the client names none; `SIZE_UNKNOWN` when none can
/// be named. RAID 5 on a Lyx controller goes by the first RAID 5 volume of `array` (may be null), else by the
/// number of disks; all else by what the engine names, else by the level.
StripSize defaultStripSize(IMirnSession& session, RaidLevel level, const std::vector<EndDevice>& disks,
                           const Array* array);

/// The same; "INTERNAL_ERROR" when none can be named.
StripSize requiredDefaultStripSize(IMirnSession& session, RaidLevel level,
                                   const std::vector<EndDevice>& disks, const Array* array);

/// The controller with this id, of the session's controllers, is of type Lyx. False for an unknown one.
bool isLyxController(IMirnSession& session, const std::wstring& controllerId);

#endif
