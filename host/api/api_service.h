#ifndef MIRN_HOST_API_API_SERVICE_H
#define MIRN_HOST_API_API_SERVICE_H

#include <cstddef>
#include <string>
#include <vector>

#include "api/job.h"
#include "api/path_keys.h"
#include "api/request_head.h"
#include "api/request_target.h"
#include "controls/simulator_controls.h"
#include "identity/authenticator.h"
#include "plugin_interface.h"

namespace host {

/// Turns HTTP requests into calls of the plug-in, and what comes back into answers. Knows nothing of
/// connections. Constant after construction, safe from any thread.
class ApiService {
 public:
  /// `plugin` is initialised; it and `authenticator`, who must know a client, outlive the service. A body is
  /// nested no deeper than `maxBodyDepth`. `controls`, if there are any, are served under "simulator", ahead
  /// of a key of that name.
  ApiService(ovra::service_plugin_interface& plugin, const IAuthenticator& authenticator,
             std::size_t maxBodyDepth, SimulatorControls controls = {});

  /// Judges the request by its header alone, so that a refused one costs no reading of its body. Raises a
  /// `Refusal` 400, 401, 404, 405 or 415.
  Job prepare(const RequestHead& head) const;

 private:
  Identity identify(const RequestHead& head, RequestTarget& target) const;
  Job prepareHealth(const RequestHead& head) const;
  Job prepareCall(const RequestHead& head, RequestTarget target) const;
  Job prepareControl(const RequestHead& head, const std::vector<std::wstring>& segments) const;
  Answer describePlugin() const;
  ovra::data_transfer::ServiceObject listDisks() const;

  ovra::service_plugin_interface& m_plugin;
  const std::vector<std::wstring> m_paths;
  const PathKeys m_keys;
  const IAuthenticator& m_authenticator;
  const std::size_t m_maxBodyDepth;
  const SimulatorControls m_controls;
  mutable DiskNames m_disks;  ///< has its own lock
};

}  // namespace host

#endif
