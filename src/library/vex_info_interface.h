#ifndef MIRN_LIBRARY_VEX_INFO_INTERFACE_H
#define MIRN_LIBRARY_VEX_INFO_INTERFACE_H

#include <map>
#include <string>
#include <vector>

#include "array.h"
#include "controller.h"
#include "enddevice.h"
#include "port.h"
#include "raid.h"
#include "raidlevelsupport.h"
#include "shared_text.h"
#include "version.h"
#include "VEXL2.h"
#include "volume.h"

/// Reads the configuration from the library as model objects. Nothing is cached: each call asks the library
/// anew, and lists keep its order. All reads but `getVersion` need an open session.
///
/// Any refusal of the library raises `VexException` with its status, and nothing that was read so far is
/// kept; text that is not UTF-8 raises `std::range_error`. An object is used by one thread.
class IVexInfo {
 public:
  using ControllerIds = std::map<std::wstring, std::vector<SharedText>>;
  using RaidLevels = std::map<std::wstring, std::map<RaidLevel, RaidLevelSupport>>;

  virtual ~IVexInfo() = default;

  virtual Version getVersion() const = 0;

  /// Raises status 15 when a controller names a RAID engine that the library does not report.
  virtual std::vector<Controller> getControllers() const = 0;

  // `scope` (VEX_SCOPE_...) and the handle that goes with it choose the objects.

  /// Empty when there is a filter: end devices have no name to compare it with.
  virtual std::vector<EndDevice> getEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                               std::string filter) const = 0;
  /// All of them for an empty filter, else those of exactly this name.
  virtual std::vector<Array> getArrays(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, std::string filter) const = 0;
  /// As `getArrays`.
  virtual std::vector<Volume> getVolumes(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                         std::string filter) const = 0;
  virtual std::vector<Port> getPorts(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const = 0;

  virtual std::vector<Raid> getRaids() const = 0;
  virtual RaidLevelSupport getRaidLevel(const Raid& raid, RaidLevel level) const = 0;

  // By the id of each controller, the ids of what hangs under it.

  virtual ControllerIds getControllerArrays(const std::vector<Controller>& controllers) const = 0;
  virtual ControllerIds getControllerPorts(const std::vector<Controller>& controllers) const = 0;
  virtual ControllerIds getControllerVolumes(const std::vector<Controller>& controllers) const = 0;

  /// By the id of each RAID engine, its five levels, `RAID_INVALID` among them.
  virtual RaidLevels getRaidLevels(const std::vector<Raid>& raids) const = 0;

  /// Opens a session of the library, and closes one that is open still.
  virtual void open() = 0;
  virtual void close() = 0;
};

#endif
