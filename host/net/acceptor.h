#ifndef MIRN_HOST_NET_ACCEPTOR_H
#define MIRN_HOST_NET_ACCEPTOR_H

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>

#include "net/shared_state.h"

namespace host {

/// Takes clients in, a `Connection` each. Must stay until the I/O threads have ended.
class Acceptor {
 public:
  /// Takes the endpoint; clients may connect from now on and wait. Raises `boost::system::system_error` when
  /// the endpoint cannot be had.
  Acceptor(boost::asio::io_context& io, const boost::asio::ip::tcp::endpoint& endpoint);

  /// `state` outlives the connections.
  void start(SharedState& state);

  /// Gives the endpoint back. Safe from any thread.
  void stop();

  boost::asio::ip::tcp::endpoint endpoint() const { return m_endpoint; }

 private:
  void accept(SharedState& state);
  void onAccept(SharedState& state, boost::system::error_code error, boost::asio::ip::tcp::socket socket);
  void pause(SharedState& state);

  boost::asio::io_context& m_io;
  boost::asio::strand<boost::asio::io_context::executor_type> m_strand;
  boost::asio::ip::tcp::acceptor m_acceptor;
  boost::asio::steady_timer m_pause;
  const boost::asio::ip::tcp::endpoint m_endpoint;
};

}  // namespace host

#endif
