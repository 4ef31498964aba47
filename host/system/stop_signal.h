#ifndef MIRN_HOST_SYSTEM_STOP_SIGNAL_H
#define MIRN_HOST_SYSTEM_STOP_SIGNAL_H

#include <functional>
#include <memory>
#include <string>

namespace host {

/// What a user or the system tells the host to stop by.
class IStopSignal {
 public:
  virtual ~IStopSignal() = default;

  /// Returns when one has come. Calls `reload`, which raises nothing, each time somebody asks meanwhile that
  /// the files of the configuration be read again, where the system has a signal for that.
  virtual void wait(const std::function<void()>& reload) = 0;
};

/// Takes the signals of the process in from now on; a second one ends the process at once. One
/// source a system. Raises `std::runtime_error` with the system's reason.
std::unique_ptr<IStopSignal> makeStopSignal();

/// They in words for a user, such as "SIGTERM or SIGINT".
std::string stopSignalNames();

}  // namespace host

#endif
