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
#include "net/tls.h"
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

  /// Shows the certificate that stands in its files now to whoever comes from now on. One that does not serve
  /// is told to standard error, and the one before stays. Safe from any thread.
  void reloadCertificate();

  /// Of the Unix socket; empty without one.
  const std::string& socketPath() const { return m_socketPath; }

  /// Of the endpoint, such as "http://127.0.0.1:8080".
  std::string url() const;

 private:
  void requestStop();
  void listenLocally();

  const Options m_options;
  const std::unique_ptr<ITls> m_tls;     // null without TLS
  std::unique_ptr<SharedState> m_state;  // outlives the connections, which `m_io` holds
  boost::asio::io_context m_io;
  Acceptor m_acceptor;
  std::string m_socketPath;
  std::unique_ptr<Acceptor> m_localAcceptor;  // null without a Unix socket
  std::vector<std::future<void>> m_threads;
};

}  // namespace host

#endif
