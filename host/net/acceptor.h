#ifndef MIRN_HOST_NET_ACCEPTOR_H
#define MIRN_HOST_NET_ACCEPTOR_H

#include <boost/asio/basic_socket_acceptor.hpp>
#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "net/client_stream.h"
#include "net/handed_sockets.h"
#include "net/shared_state.h"

namespace host {

using ListeningSocket = boost::asio::basic_socket_acceptor<boost::asio::generic::stream_protocol>;
using ClientSocket = boost::asio::generic::stream_protocol::socket;
using Endpoint = boost::asio::generic::stream_protocol::endpoint;

/// Takes clients in at one endpoint, of TCP or of another kind, a `Connection` each, on the event loops in
/// turn. Lives on a loop of one thread, and must stay until all loops have ended.
class Acceptor {
 public:
  /// What a client's bytes are carried by, and who the client is.
  using MakeStream = std::function<std::unique_ptr<ClientStream>(ClientSocket)>;

  /// Takes the endpoint; clients may connect from now on and wait. `onTaken` runs before they may. Raises
  /// `boost::system::system_error` when the endpoint cannot be had.
  Acceptor(
      boost::asio::io_context& io, const Endpoint& endpoint, MakeStream makeStream,
      const std::function<void()>& onTaken = [] {});

  /// Takes over a socket that clients may connect to already. Raises `boost::system::system_error`.
  Acceptor(boost::asio::io_context& io, const HandedSocket& handed, MakeStream makeStream);

  /// `state` outlives the connections.
  void start(SharedState& state);

  /// Gives the endpoint back. Safe from any thread.
  void stop();

  /// The one that was taken, its port told even where any would do.
  const Endpoint& endpoint() const { return m_endpoint; }

 private:
  void accept(SharedState& state);
  void onAccept(SharedState& state, boost::system::error_code error, ClientSocket socket);
  void admit(SharedState& state, ClientSocket socket);
  void onFailure(SharedState& state, const std::string& reason);

  ListeningSocket m_acceptor;
  boost::asio::steady_timer m_pause;
  std::optional<std::chrono::steady_clock::time_point> m_lastFailure;
  const MakeStream m_makeStream;
  const Endpoint m_endpoint;
};

}  // namespace host

#endif
