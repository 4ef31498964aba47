#ifndef MIRN_HOST_NET_SERVER_H
#define MIRN_HOST_NET_SERVER_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "api/api_service.h"
#include "net/acceptor.h"
#include "net/event_loops.h"
#include "net/handed_sockets.h"
#include "net/heartbeat.h"
#include "net/shared_state.h"
#include "net/tls.h"
#include "options.h"

namespace host {

/// The I/O threads, the workers and the acceptor. Belongs to one thread.
class Server {
 public:
  /// Takes the address and port, and the Unix socket, or what was handed over in their places; nobody is
  /// served yet. Raises `std::runtime_error` when they cannot be had, `UsageError` when others could read
  /// along at an address that was handed over.
  Server(const Options& options, const HandedSockets& handed);
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  /// Waits for whatever is under way.
  ~Server();

  /// `service` outlives the server, as does `counts`, which counts all answers where it is there.
  void start(const ApiService& service, RequestCounts* counts = nullptr);

  /// Has the threads of input and output call `beat` again and again, from `start` to the stop: as long as
  /// they come to what there is to do. To be called ahead of `start`.
  void beatEvery(std::chrono::microseconds interval, std::function<void()> beat);

  /// Takes no further request and waits for those under way. False when some were still there
  /// after the drain time.
  bool drain();

  /// Shows the certificate that stands in its files now to whoever comes from now on. One that does not serve
  /// is told to standard error, and the one before stays. Safe from any thread.
  void reloadCertificate();

  /// Of the Unix socket; empty without one. What was handed over stays at the end.
  const std::string& socketPath() const { return m_socketPath; }

  /// Of the endpoint, such as "http://127.0.0.1:8080".
  std::string url() const;

 private:
  void requestStop();
  void listenLocally(const std::optional<HandedSocket>& handed);

  const Options m_options;
  const std::unique_ptr<ITls> m_tls;     // null without TLS
  std::unique_ptr<SharedState> m_state;  // outlives the connections, which `m_loops` hold
  EventLoops m_loops;
  Acceptor m_acceptor;
  std::string m_socketPath;
  bool m_ownsSocketFile = false;
  std::unique_ptr<Acceptor> m_localAcceptor;  // null without a Unix socket
  std::unique_ptr<Heartbeat> m_heartbeat;     // null while nobody listens for one
};

}  // namespace host

#endif
