#ifndef MIRN_HOST_INSIGHT_INSIGHT_DESK_H
#define MIRN_HOST_INSIGHT_INSIGHT_DESK_H

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "plugin_extensions.h"
#include "plugin_interface.h"

namespace insight {
class InsightMetrics;
class InsightService;
class MachineViewSource;
struct Operation;
}  // namespace insight

namespace host {

/// A plug-in whose machine insight can read. Safe from any thread.
struct InsightDesk {
  ovra::service_plugin_interface& plugin;
  ovra::watched_plugin_1& watched;
  ovra::rehearsed_plugin_1& rehearsed;
  std::shared_ptr<insight::MachineViewSource> views;
  std::shared_ptr<const std::vector<insight::Operation>> operations;
  std::shared_ptr<insight::InsightService> service;
  std::shared_ptr<insight::InsightMetrics> metrics;
};

/// Null for a plug-in that insight knows nothing of. `plugin`, which handles `keys`, outlives the desk;
/// `history` is the file of what has happened, empty where nothing is to be kept.
std::shared_ptr<InsightDesk> insightDeskOf(ovra::service_plugin_interface& plugin,
                                           const std::vector<std::wstring>& keys,
                                           const std::filesystem::path& history);

/// The machine is watched from now on; the plug-in is initialised.
void beginWatch(const InsightDesk& desk);
/// It is not any more, and who listens is told.
void announceStop(const InsightDesk& desk);

}  // namespace host

#endif
