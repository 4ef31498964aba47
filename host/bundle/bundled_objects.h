#ifndef MIRN_HOST_BUNDLE_BUNDLED_OBJECTS_H
#define MIRN_HOST_BUNDLE_BUNDLED_OBJECTS_H

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace insight {
struct MachineView;
}  // namespace insight

namespace host {

/// Of what a bundle asks one by one. Plain value.
struct BundledObjects {
  /// The values that the names in paths stand for: the ids of all "raidId", "arrayId" …
  std::map<std::wstring, std::vector<std::wstring>> ids;
  /// Type and id of those whose actions are asked for.
  std::vector<std::pair<std::wstring, std::wstring>> acting;
  std::size_t mostActing = 0;  ///< Of more there are no actions.
  bool areAllActing = true;
};

/// All of `machine`; at most so many actions, first those of what there is the least of.
BundledObjects bundledObjectsOf(const insight::MachineView& machine, std::size_t mostActing);

}  // namespace host

#endif
