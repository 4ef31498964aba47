#ifndef MIRN_LISTENERS_CONFIGURATION_H
#define MIRN_LISTENERS_CONFIGURATION_H

#include "plugin_setting.h"
#include "ServiceObject.h"

/// The settings as clients read and change them, from their rows alone.

/// An object with a member for each setting: its description, type, value and bounds. The numbers are signed,
/// although a change takes unsigned ones.
ovra::data_transfer::ServiceObject configurationOf(const PluginSettings& settings, IMirnSession& session);

/// Changes the settings that `body` names, one at least. All values are judged before the first is stored;
/// a store that refuses one keeps those ahead of it. Raises `RequestError` for a body of another shape, and
/// `ListenerException` for anything else.
void changeConfiguration(const PluginSettings& settings, IMirnSession& session,
                         const ovra::data_transfer::ServiceObject& body);

#endif
