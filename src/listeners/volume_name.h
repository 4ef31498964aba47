#ifndef MIRN_LISTENERS_VOLUME_NAME_H
#define MIRN_LISTENERS_VOLUME_NAME_H

#include <string>

#include "read_interface.h"

/// Raises "INVALID_PARAMETER" unless `name` may be given to a volume. With a session (it may be null), no
/// volume may have the name already, the one that is to get it included.
void validateVolumeName(const std::wstring& name, IMirnSession* session);

#endif
