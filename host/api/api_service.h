#ifndef MIRN_HOST_API_API_SERVICE_H
#define MIRN_HOST_API_API_SERVICE_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "answers/answer.h"
#include "api/path_keys.h"
#include "api/request_target.h"
#include "controls/simulator_controls.h"
#include "plugin_interface.h"

namespace host {

/// What is known of a request when its header is read.
struct RequestHead {
  std::string method;
  std::string target;
  std::string authorization;  ///< Empty when the field is missing.
  std::string contentType;    ///< Empty when the field is missing.
  bool hasBody = false;
};

/// Turns HTTP requests into calls of the plug-in, and what comes back into answers. Knows nothing of
/// connections. Constant after construction, safe from any thread.
class ApiService {
 public:
  /// The rest of a request, to be run with its body on a thread that may block. A failure
  /// leaves as an exception.
  using Job = std::function<Answer(const std::string& body)>;

  /// `plugin` is initialised and outlives the service. A client has to show `token`; a body is nested no
  /// deeper than `maxBodyDepth`. `controls`, if there are any, are served under "simulator", ahead of a key
  /// of that name.
  ApiService(ovra::service_plugin_interface& plugin, std::string token, std::size_t maxBodyDepth,
             SimulatorControls controls = {});

  /// Judges the request by its header alone, so that a refused one costs no reading of its body. Raises a
  /// `Refusal` 400, 401, 404, 405 or 415.
  Job prepare(const RequestHead& head) const;

 private:
  void requireToken(const RequestHead& head, RequestTarget& target) const;
  Job prepareHealth(const RequestHead& head) const;
  Job prepareCall(const RequestHead& head, RequestTarget target) const;
  Job prepareControl(const RequestHead& head, const std::vector<std::wstring>& segments) const;
  Answer describePlugin() const;
  ovra::data_transfer::ServiceObject listDisks() const;

  ovra::service_plugin_interface& m_plugin;
  const std::vector<std::wstring> m_paths;
  const PathKeys m_keys;
  const std::string m_token;
  const std::size_t m_maxBodyDepth;
  const SimulatorControls m_controls;
  mutable DiskNames m_disks;  ///< has its own lock
};

}  // namespace host

#endif
