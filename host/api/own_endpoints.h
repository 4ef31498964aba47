#ifndef MIRN_HOST_API_OWN_ENDPOINTS_H
#define MIRN_HOST_API_OWN_ENDPOINTS_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "answers/json_reader.h"
#include "api/endpoint_table.h"
#include "controls/simulator_controls.h"
#include "plugin_interface.h"
#include "system/health_monitor.h"

namespace host {

/// The library that the plug-in stands on.
struct LibraryDescription {
  std::string name;
  std::string path;          ///< Absolute.
  bool isSimulated = false;  ///< It brought the controls of a simulated machine.
};

/// "healthz" and "readyz", for anybody. `monitor` outlives the table.
void addHealthEndpoints(EndpointTable& table, const HealthMonitor& monitor);

/// Who is served, under "api" and the version: names, code, versions, path `keys`, and the library if it is
/// known. Nothing is asked again later.
void addServiceEndpoint(EndpointTable& table, const ovra::plugin_interface& plugin,
                        const std::vector<std::wstring>& keys,
                        const std::optional<LibraryDescription>& library = {});

/// The controls of a simulated machine under "simulator", if there are any. `plugin`, which handles `keys`,
/// outlives the table. `bodies` bounds what a body holds.
void addControlEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin,
                         const std::vector<std::wstring>& keys, SimulatorControls controls,
                         const JsonBounds& bodies);

}  // namespace host

#endif
