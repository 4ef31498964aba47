#ifndef MIRN_PLUGIN_LISTENER_TABLE_H
#define MIRN_PLUGIN_LISTENER_TABLE_H

#include <map>
#include <memory>
#include <string>

#include "listener_interface.h"
#include "session_actions.h"
#include "snapshot_reads.h"

/// Makes the listener of one branch over views of a session, which must outlive it.
using ListenerMaker = std::unique_ptr<IListener> (*)(IMirnSession& session, SessionActions& actions);

/// The listeners of all branches, by their path keys. Constant; safe from any thread.
const std::map<std::wstring, ListenerMaker>& listenerMakers();

#endif
