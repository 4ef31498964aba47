#ifndef MIRN_TESTS_SIMULATOR_REFERENCE_LIBRARY_VIEW_H
#define MIRN_TESTS_SIMULATOR_REFERENCE_LIBRARY_VIEW_H

#include <string>
#include <vector>

#include "simulator/reference/machine.h"

namespace reference {

/// All records of the library, in the order of their handles.
class LibraryView {
 public:
  explicit LibraryView(Handle session) : m_session(session) {}

  std::vector<VEX_CONTROLLER_INFO> controllers() const;
  std::vector<VEX_END_DEVICE_INFO> disks() const;
  std::vector<VEX_PHY_INFO> phys() const;
  std::vector<VEX_PORT_INFO> ports() const;
  std::vector<VEX_ARRAY_INFO> arrays() const;
  std::vector<VEX_VOLUME_INFO> volumes() const;
  bool isLevelInUse(Handle engine, std::uint32_t level) const;

  /// The whole machine as the text of a scenario.
  static std::string machine();

 private:
  Handle m_session;
};

/// What the name field of a record holds of the wish.
Wish cut(Wish wish);

template <class Params>
void fill(Params& params, const Wish& wish) {
  wish.name.copy(params.name, sizeof(params.name));
  params.raidLevel = wish.level;
  params.stripSize = wish.strip;
  params.size = wish.sizeMiB;
  params.rwhPolicy = wish.policy;
  params.journalingDriveHandle = wish.journal;
}

}  // namespace reference

#endif
