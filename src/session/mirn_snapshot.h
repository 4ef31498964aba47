#ifndef MIRN_SESSION_MIRN_SNAPSHOT_H
#define MIRN_SESSION_MIRN_SNAPSHOT_H

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "array.h"
#include "controller_builder.h"
#include "enddevice.h"
#include "port.h"
#include "raid.h"
#include "raidlevelsupport.h"
#include "shared_text.h"
#include "version.h"
#include "volume.h"

/// One complete picture of the storage system: a plain value. The session guards the one in use.
struct MirnSnapshot {
  using IdLists = std::map<std::wstring, std::vector<SharedText>>;
  using RaidLevels = std::map<std::wstring, std::map<RaidLevel, RaidLevelSupport>>;

  std::vector<Raid> raids;
  std::vector<Controller> controllers;
  std::vector<Array> arrays;
  std::vector<EndDevice> endDevices;
  std::vector<Port> ports;
  std::vector<Volume> volumes;
  std::shared_ptr<Version> version;  ///< Empty until a snapshot succeeded.
  IdLists controllerArrays;          ///< Controller id to the ids of its arrays.
  IdLists controllerPorts;           ///< Controller id to the ids of its ports.
  IdLists controllerVolumes;         ///< Controller id to the ids of its volumes.
  RaidLevels raidLevels;             ///< Raid id to what each of its levels supports.
};

/// Brings a picture that was just read into its final form, in this order: sorts the lists, resolves the
/// handles that objects hold of each other into ids, and adjusts the hot-plug flags. A handle that names
/// nothing leaves its id empty. Calls nothing outside.
void finishSnapshot(MirnSnapshot& snapshot);

#endif
