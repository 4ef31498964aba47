#ifndef MIRN_INSIGHT_SERVICE_PLUGIN_EVENTS_H
#define MIRN_INSIGHT_SERVICE_PLUGIN_EVENTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "history/entry.h"
#include "ServiceObject.h"

namespace insight {

/// A part of a plug-in's events.
struct PluginEvents {
  std::uint64_t oldest = 0;  ///< The number of the oldest that the plug-in still holds; 0: none.
  std::vector<Entry> entries;
};

/// Reads what `watched_plugin_1::eventsAfter` gives; `epoch` is the plug-in's.
PluginEvents pluginEventsOf(const ovra::data_transfer::ServiceObject& events, const std::string& epoch);

}  // namespace insight

#endif
