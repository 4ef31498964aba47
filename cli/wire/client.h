#ifndef MIRN_CLI_WIRE_CLIENT_H
#define MIRN_CLI_WIRE_CLIENT_H

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>

#include "destination/destination.h"
#include "wire/message.h"

namespace mirnctl {

class Connection;

/// Who answers requests: a service, or what stands in for one.
class IService {
 public:
  virtual ~IService() = default;

  /// Raises `Failure` where nothing comes back.
  virtual Reply ask(const Request& request) = 0;

  /// Hands on what the body of a successful answer brings, as it comes, until `take` says false or it ends.
  /// Another answer comes back whole; of a successful one the head.
  virtual Reply follow(const Request& request, const std::function<bool(std::string_view)>& take) = 0;
};

/// A service over HTTP, one connection for all requests as long as it holds.
class Client : public IService {
 public:
  /// `patience`: for each step of a request.
  Client(Destination destination, std::chrono::seconds patience);
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  ~Client() override;

  Reply ask(const Request& request) override;
  Reply follow(const Request& request, const std::function<bool(std::string_view)>& take) override;

 private:
  Connection& connection();
  std::unique_ptr<Connection> connect() const;

  const Destination m_destination;
  const std::chrono::seconds m_patience;
  std::unique_ptr<Connection> m_connection;
};

}  // namespace mirnctl

#endif
