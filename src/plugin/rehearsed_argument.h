#ifndef MIRN_PLUGIN_REHEARSED_ARGUMENT_H
#define MIRN_PLUGIN_REHEARSED_ARGUMENT_H

#include <string>

#include "rehearsal.h"

/// Puts `value` in the place of `argument`: the member of the body with this key, or the segment of the
/// path that its template calls so, as in "{volumeId}". A body that can have no members stays as it is. A
/// name that stands nowhere in the path raises `ListenerException` with "INVALID_PARAMETER".
void putArgument(PluginRequest& request, const std::wstring& argument,
                 const ovra::data_transfer::ServiceObject& value);

#endif
