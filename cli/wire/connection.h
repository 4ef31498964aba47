#ifndef MIRN_CLI_WIRE_CONNECTION_H
#define MIRN_CLI_WIRE_CONNECTION_H

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>

#include "destination/destination.h"
#include "wire/message.h"

namespace mirnctl {

/// One connection to a service; for one thread. What it asks raises `Failure` where nothing comes back.
class Connection {
 public:
  Connection() = default;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  virtual ~Connection() = default;

  virtual Reply ask(const Request& request) = 0;
  virtual Reply follow(const Request& request, const std::function<bool(std::string_view)>& take) = 0;

  /// Whether it may be asked again.
  virtual bool isOpen() const = 0;
};

/// Both connect, and raise `Failure` where that fails; `destination` outlives what they return. `patience` is
/// for each step of a request.
std::unique_ptr<Connection> plainConnection(const Destination& destination, std::chrono::seconds patience);

/// Over TLS; one source a system.
std::unique_ptr<Connection> secureConnection(const Destination& destination, std::chrono::seconds patience);

}  // namespace mirnctl

#endif
