#ifndef MIRN_INSIGHT_VIEW_MACHINE_VIEW_H
#define MIRN_INSIGHT_VIEW_MACHINE_VIEW_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "plugin_extensions.h"

/// The whole picture of a plug-in as plain values, with the links between its objects as look-ups. Words stay
/// the plug-in's own texts, "UNKNOWN" among them. Ids are empty where there is no such object.

namespace insight {

/// What an engine can do at one level.
struct LevelView {
  std::wstring level;
  std::vector<std::wstring> stripSizes;  ///< None where it has no choice.
};

struct RaidView {
  std::wstring id;
  std::vector<LevelView> levels;
};

struct ControllerView {
  std::wstring id;
  std::wstring name;
  std::wstring raidId;
};

struct ArrayView {
  std::wstring id;
  std::wstring name;
  std::vector<std::wstring> controllerIds;
  std::uint64_t freeBytes = 0;   ///< Of all its disks together.
  std::uint64_t totalBytes = 0;  ///< Likewise: as much of each as its smallest one gives.
  std::uint64_t diskCount = 0;
  std::wstring state{};
};

/// An end device that is a disk.
struct DiskView {
  std::wstring id;
  std::wstring controllerId;
  std::wstring arrayId;
  std::wstring state;
  std::wstring usage;
  std::wstring type;
  std::wstring serialNumber;
  std::wstring model;
  std::wstring firmware;
  std::wstring address;
  std::uint64_t totalBytes = 0;
  std::uint64_t freeBytes = 0;  ///< What a new volume could take of it.
  bool isSystemDisk = false;
};

struct PortView {
  std::wstring id;
  std::wstring deviceId;     ///< What the port belongs to.
  std::wstring connectedId;  ///< The port that it is connected with.
};

struct VolumeView {
  std::wstring id;
  std::wstring name;
  std::wstring arrayId;
  std::wstring state;
  std::wstring level;
  std::wstring writeHolePolicy;
  std::wstring journalingDriveId;
  std::uint64_t totalBytes = 0;
  std::uint64_t diskCount = 0;
  std::uint64_t percent = 0;  ///< Of the work under way.
  std::uint64_t verifyErrors = 0;
  std::uint64_t badBlocks = 0;
  bool isInitialized = false;
  bool isMigrating = false;
  bool isSystemVolume = false;
};

/// Work under way on a volume, as the plug-in's state tells it.
struct WorkView {
  std::wstring volumeId;
  std::wstring action;  ///< A state of a volume: "REBUILDING".
};

/// One moment of the machine. Constant once made; copies are deep.
struct MachineView {
  /// Where the object with an id stands in its list; of two, the first.
  using Places = std::unordered_map<std::wstring, std::size_t>;

  ovra::PluginPosition position;
  std::optional<std::uint64_t> takenAt;   ///< Milliseconds since 1970, UTC; nothing before the first picture.
  std::optional<std::uint64_t> failedAt;  ///< The last refresh, where that failed.
  std::wstring failure;                   ///< Its words.
  std::wstring serviceState;              ///< "NORMAL", "WARNING" or "FAILED".
  std::vector<WorkView> work;
  std::vector<RaidView> raids;
  std::vector<ControllerView> controllers;
  std::vector<ArrayView> arrays;
  std::vector<DiskView> disks;
  std::vector<VolumeView> volumes;
  std::vector<PortView> ports;
  std::map<std::wstring, std::vector<std::wstring>> portsOfController;

  Places controllerPlaces;
  Places arrayPlaces;
  Places diskPlaces;
  Places volumePlaces;
  std::unordered_map<std::wstring, std::vector<std::size_t>> memberPlaces;  ///< Of disks, by array.

  /// Fills the places from the lists.
  void index();

  // Null for an id that there is not.
  const ControllerView* controller(const std::wstring& id) const;
  const ArrayView* array(const std::wstring& id) const;
  const DiskView* disk(const std::wstring& id) const;
  const VolumeView* volume(const std::wstring& id) const;

  /// The disks of an array in the order of the list.
  std::vector<const DiskView*> membersOf(const std::wstring& arrayId) const;
  /// What is being done to a volume; nothing when nothing is.
  std::optional<std::wstring> workOn(const std::wstring& volumeId) const;
};

/// Reads what `watched_plugin_1::picture` gives. What it lacks is left at its default.
MachineView machineViewOf(const ovra::data_transfer::ServiceObject& picture);

}  // namespace insight

#endif
