#ifndef MIRN_INSIGHT_VIEW_MACHINE_VIEW_SOURCE_H
#define MIRN_INSIGHT_VIEW_MACHINE_VIEW_SOURCE_H

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

#include "plugin_extensions.h"
#include "view/machine_view.h"

namespace insight {

/// The plug-in's picture as one view for everybody, since each costs what the machine is large. Safe from any
/// thread: while one makes a view, the others wait for it.
class MachineViewSource {
 public:
  using Moment = std::chrono::steady_clock::time_point;
  using Clock = std::function<Moment()>;

  /// When a picture was taken, and whether a later try failed, changes without a revision: a view is given
  /// out for so many times as long as it took to make, and no longer than this. So making them takes a tenth
  /// of a processor at most.
  static constexpr int kUseToMaking = 10;
  static constexpr std::chrono::seconds kLongestUse{2};

  /// `plugin` outlives the source.
  explicit MachineViewSource(
      ovra::watched_plugin_1& plugin, Clock clock = [] { return std::chrono::steady_clock::now(); });

  /// At the plug-in's position. Never null.
  std::shared_ptr<const MachineView> view();

  /// At the plug-in's structure: progress, counters and times may be older. For who needs no more, since it
  /// is made seldom.
  std::shared_ptr<const MachineView> viewOfStructure();

 private:
  bool isCurrent() const;
  bool isOfStructure() const;
  void make();

  ovra::watched_plugin_1& m_plugin;
  const Clock m_clock;

  std::mutex m_mutex;
  std::shared_ptr<const MachineView> m_view;
  Moment m_end;  ///< It is given out until then.
};

}  // namespace insight

#endif
