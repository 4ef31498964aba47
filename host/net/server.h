#ifndef MIRN_HOST_NET_SERVER_H
#define MIRN_HOST_NET_SERVER_H

#include <boost/asio/io_context.hpp>
#include <cstdint>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include "api/api_service.h"
#include "net/acceptor.h"
#include "net/shared_state.h"
#include "options.h"

namespace host {

/// The I/O threads, the workers and the acceptor. Belongs to one thread.
class Server {
 public:
  /// Takes the address and port; nobody is served yet. Raises `std::runtime_error` when they cannot be had.
  explicit Server(const Options& options);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  /// Waits for whatever is under way.
  ~Server();

  /// `service` outlives the server.
  void start(const ApiService& service);

  /// Takes no further request and waits for those under way. False when some were still there
  /// after the drain time.
  bool drain();

  /// Of the endpoint, such as "http://127.0.0.1:8080".
  std::string url() const;

 private:
  void requestStop();

  const Options m_options;
  std::unique_ptr<SharedState> m_state;  // outlives the connections, which `m_io` holds
  boost::asio::io_context m_io;
  Acceptor m_acceptor;
  std::vector<std::future<void>> m_threads;
};

}  // namespace host

#endif
