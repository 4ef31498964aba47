#include "metrics/machine_metrics.h"

#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "health/tolerance.h"
#include "jobs/job.h"
#include "text.h"

namespace insight {

namespace {

constexpr MetricFamily::Type kGauge = MetricFamily::Type::kGauge;

constexpr MetricFamily kObjects{"mirn_objects", kGauge, "Objects of the machine, by kind."};
constexpr MetricFamily kState{"mirn_state", kGauge, "The state of the service: 1 for the one that it has."};
constexpr MetricFamily kControllerInfo{"mirn_controller_info", kGauge, "What is fixed of a controller."};
constexpr MetricFamily kArrayInfo{"mirn_array_info", kGauge, "What is fixed of an array."};
constexpr MetricFamily kArrayState{"mirn_array_state", kGauge,
                                   "The state of an array: 1 for the one that it has."};
constexpr MetricFamily kArraySize{"mirn_array_size_bytes", kGauge, "The size of an array."};
constexpr MetricFamily kArrayFree{"mirn_array_free_bytes", kGauge, "What no volume has taken of an array."};
constexpr MetricFamily kVolumeInfo{"mirn_volume_info", kGauge, "What is fixed of a volume."};
constexpr MetricFamily kVolumeState{"mirn_volume_state", kGauge,
                                    "The state of a volume: 1 for the one that it has."};
constexpr MetricFamily kVolumeSize{"mirn_volume_size_bytes", kGauge, "The size of a volume."};
constexpr MetricFamily kVolumeInitialized{"mirn_volume_initialized", kGauge,
                                          "Whether the redundancy of a volume was made once."};
constexpr MetricFamily kVolumeMayFail{
    "mirn_volume_tolerated_failures", kGauge,
    "How many disks of a volume may fail, whichever these are, with the volume serving on; never too many."};
constexpr MetricFamily kVolumeVerifyErrors{"mirn_volume_verify_errors", kGauge,
                                           "Errors that the last verification of a volume has counted."};
constexpr MetricFamily kVolumeBadBlocks{"mirn_volume_bad_blocks", kGauge,
                                        "Bad blocks that the last verification of a volume has counted."};
constexpr MetricFamily kStepsDone{"mirn_volume_work_steps_done", kGauge,
                                  "How many steps of the work under way on a volume are done."};
constexpr MetricFamily kSteps{"mirn_volume_work_steps", kGauge,
                              "How many steps the work under way on a volume has in all."};
constexpr MetricFamily kDiskInfo{"mirn_disk_info", kGauge, "What is fixed of a disk."};
constexpr MetricFamily kDiskArrayInfo{"mirn_disk_array_info", kGauge, "The array that a disk is part of."};
constexpr MetricFamily kDiskState{"mirn_disk_state", kGauge,
                                  "The state of a disk: 1 for the one that it has."};
constexpr MetricFamily kDiskUsage{"mirn_disk_usage", kGauge,
                                  "What a disk is used for: 1 for the usage that it has."};
constexpr MetricFamily kDiskSize{"mirn_disk_size_bytes", kGauge, "The size of a disk."};
constexpr MetricFamily kDiskFree{"mirn_disk_free_bytes", kGauge, "What a new volume could take of a disk."};

/// A work is told in hundredths.
constexpr std::uint64_t kAllSteps = 100;

/// What cannot be told as UTF-8 is told without what is foreign in it.
std::string toLabel(const std::wstring& text) {
  try {
    return wideToUtf8(text);
  } catch (const std::range_error&) {
    std::string plain;
    for (const wchar_t unit : text) {
      plain += unit >= L' ' && unit <= L'~' ? static_cast<char>(unit) : '?';
    }
    return plain;
  }
}

/// An object, and its id as a label has it.
template <class View>
struct Measured {
  const View* view;
  std::string id;
};

template <class View>
using AllMeasured = std::vector<Measured<View>>;

/// No two of them have one id.
template <class View>
AllMeasured<View> measuredOf(const std::vector<View>& views, const MachineView::Places& places) {
  AllMeasured<View> measured;
  measured.reserve(views.size());
  for (std::size_t place = 0; place < views.size(); ++place) {
    const auto first = places.find(views[place].id);
    if (first != places.end() && first->second == place) {
      measured.push_back({&views[place], toLabel(views[place].id)});
    }
  }
  return measured;
}

/// A number of each object.
template <class View, class Number>
void addNumbers(MetricText& text, const MetricFamily& family, const char* kind,
                const AllMeasured<View>& measured, const Number& numberOf) {
  text.begin(family);
  for (const auto& [view, id] : measured) text.add({{kind, id}}, numberOf(*view));
}

/// A line for each word that the state of each object may have.
template <class View>
void addStates(MetricText& text, const MetricFamily& family, const char* kind, const char* label,
               const AllMeasured<View>& measured, const StateWords& words, std::wstring View::*state) {
  text.begin(family);
  for (const auto& [view, id] : measured) {
    const std::size_t present = words.placeOf(view->*state);
    for (std::size_t place = 0; place < words.all().size(); ++place) {
      text.add({{kind, id}, {label, words.all()[place]}}, place == present ? 1 : 0);
    }
  }
}

void writeService(MetricText& text, const MachineView& machine, const StateWords& words) {
  text.begin(kObjects);
  text.add({{"kind", "controller"}}, machine.controllers.size());
  text.add({{"kind", "array"}}, machine.arrays.size());
  text.add({{"kind", "volume"}}, machine.volumes.size());
  text.add({{"kind", "disk"}}, machine.disks.size());
  text.add({{"kind", "port"}}, machine.ports.size());
  text.begin(kState);
  const std::size_t present = machine.takenAt ? words.placeOf(machine.serviceState) : words.all().size() - 1;
  for (std::size_t place = 0; place < words.all().size(); ++place) {
    text.add({{"state", words.all()[place]}}, place == present ? 1 : 0);
  }
}

void writeControllers(MetricText& text, const MachineView& machine) {
  text.begin(kControllerInfo);
  for (const auto& [controller, id] : measuredOf(machine.controllers, machine.controllerPlaces)) {
    text.add({{"controller", id}, {"name", toLabel(controller->name)}}, 1);
  }
}

void writeArrays(MetricText& text, const MachineView& machine, const StateWords& words) {
  const auto arrays = measuredOf(machine.arrays, machine.arrayPlaces);
  text.begin(kArrayInfo);
  for (const auto& [array, id] : arrays) text.add({{"array", id}, {"name", toLabel(array->name)}}, 1);
  addStates(text, kArrayState, "array", "state", arrays, words, &ArrayView::state);
  addNumbers(text, kArraySize, "array", arrays, [](const ArrayView& array) { return array.totalBytes; });
  addNumbers(text, kArrayFree, "array", arrays, [](const ArrayView& array) { return array.freeBytes; });
}

void writeWork(MetricText& text, const MetricFamily& family, const MachineView& machine, bool isWhole) {
  text.begin(family);
  std::set<std::pair<std::wstring, std::string>> told;
  for (const WorkView& work : machine.work) {
    const VolumeView* const volume = machine.volume(work.volumeId);
    const std::string kind = jobKindOf(work.action);
    if (volume == nullptr || !told.emplace(work.volumeId, kind).second) continue;
    text.add({{"volume", toLabel(work.volumeId)}, {"work", kind}}, isWhole ? kAllSteps : volume->percent);
  }
}

void writeVolumes(MetricText& text, const MachineView& machine, const StateWords& words) {
  const auto volumes = measuredOf(machine.volumes, machine.volumePlaces);
  text.begin(kVolumeInfo);
  for (const auto& [volume, id] : volumes) {
    text.add({{"volume", id},
              {"name", toLabel(volume->name)},
              {"level", toLabel(volume->level)},
              {"array", toLabel(volume->arrayId)}},
             1);
  }
  addStates(text, kVolumeState, "volume", "state", volumes, words, &VolumeView::state);
  const auto add = [&](const MetricFamily& family, const auto& numberOf) {
    addNumbers(text, family, "volume", volumes, numberOf);
  };
  add(kVolumeSize, [](const VolumeView& volume) { return volume.totalBytes; });
  add(kVolumeInitialized, [](const VolumeView& volume) { return volume.isInitialized ? 1U : 0U; });
  add(kVolumeMayFail, [&](const VolumeView& volume) { return toleranceOf(machine, volume).mayFail; });
  add(kVolumeVerifyErrors, [](const VolumeView& volume) { return volume.verifyErrors; });
  add(kVolumeBadBlocks, [](const VolumeView& volume) { return volume.badBlocks; });
  writeWork(text, kStepsDone, machine, false);
  writeWork(text, kSteps, machine, true);
}

void writeDisks(MetricText& text, const MachineView& machine, const MachineWords& words) {
  const auto disks = measuredOf(machine.disks, machine.diskPlaces);
  text.begin(kDiskInfo);
  for (const auto& [disk, id] : disks) {
    text.add({{"disk", id},
              {"serial_number", toLabel(disk->serialNumber)},
              {"model", toLabel(disk->model)},
              {"firmware", toLabel(disk->firmware)},
              {"type", toLabel(disk->type)},
              {"controller", toLabel(disk->controllerId)}},
             1);
  }
  text.begin(kDiskArrayInfo);
  for (const auto& [disk, id] : disks) {
    if (!disk->arrayId.empty()) text.add({{"disk", id}, {"array", toLabel(disk->arrayId)}}, 1);
  }
  addStates(text, kDiskState, "disk", "state", disks, words.disk, &DiskView::state);
  addStates(text, kDiskUsage, "disk", "usage", disks, words.usage, &DiskView::usage);
  addNumbers(text, kDiskSize, "disk", disks, [](const DiskView& disk) { return disk.totalBytes; });
  addNumbers(text, kDiskFree, "disk", disks, [](const DiskView& disk) { return disk.freeBytes; });
}

}  // namespace

void writeMachine(MetricText& text, const MachineView& machine, const MachineWords& words) {
  writeService(text, machine, words.service);
  writeControllers(text, machine);
  writeArrays(text, machine, words.array);
  writeVolumes(text, machine, words.volume);
  writeDisks(text, machine, words);
}

}  // namespace insight
