#include "snapshot_comparison.h"

#include "form_sameness.h"

#include <algorithm>
#include <utility>

namespace {

// In two steps: most pictures are like the one before, and need the first alone.

struct SameForm {
  template <class Object>
  bool operator()(const Object& before, const Object& after) const {
    return sameForm(before, after);
  }
};

struct SameStructure {
  template <class Object>
  bool operator()(const Object& before, const Object& after) const {
    return sameStructure(before, after);
  }
};

template <class Same, class Object>
bool sameLists(const std::vector<Object>& before, const std::vector<Object>& after) {
  return std::equal(before.begin(), before.end(), after.begin(), after.end(), Same());
}

/// Maps whose values `same` compares.
template <class Map, class SameValue>
bool sameMaps(const Map& before, const Map& after, const SameValue& same) {
  return std::equal(before.begin(), before.end(), after.begin(), after.end(),
                    [&](const auto& one, const auto& other) {
                      return one.first == other.first && same(one.second, other.second);
                    });
}

template <class Same>
bool sameLevels(const MirnSnapshot::RaidLevels& before, const MirnSnapshot::RaidLevels& after) {
  return sameMaps(before, after,
                  [](const auto& one, const auto& other) { return sameMaps(one, other, Same()); });
}

template <class Same>
bool sameVersions(const std::shared_ptr<Version>& before, const std::shared_ptr<Version>& after) {
  if (!before || !after) return before == after;
  return Same()(*before, *after);
}

/// The lists that change most come first.
template <class Same>
bool samePictures(const MirnSnapshot& before, const MirnSnapshot& after) {
  return sameLists<Same>(before.volumes, after.volumes) &&
         sameLists<Same>(before.endDevices, after.endDevices) &&
         sameLists<Same>(before.arrays, after.arrays) && sameLists<Same>(before.ports, after.ports) &&
         sameLists<Same>(before.controllers, after.controllers) &&
         sameLists<Same>(before.raids, after.raids) &&
         sameLevels<Same>(before.raidLevels, after.raidLevels) &&
         sameVersions<Same>(before.version, after.version) &&
         before.controllerArrays == after.controllerArrays &&
         before.controllerPorts == after.controllerPorts &&
         before.controllerVolumes == after.controllerVolumes;
}

}  // namespace

SnapshotDifference differenceBetween(const MirnSnapshot& before, const MirnSnapshot& after) {
  if (samePictures<SameForm>(before, after)) return SnapshotDifference::kNone;
  return samePictures<SameStructure>(before, after) ? SnapshotDifference::kProgress
                                                    : SnapshotDifference::kStructure;
}
